#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "C/InputText.h"
#include "Core/ObjectBase.h"
#include "Documents/JsonToTable.h"
#include "LayerData/layerdata.h"
#include "Tables/Csv/CsvReader.h"
#include "Tables/TextChanges.h"

namespace Data::c {

/// What `ld_read_report` refers to.
struct ReadReport final : Core::ObjectBase<Core::IObject> {
  struct Change {
    std::string column;
    impl::TextChange kind;
    impl::ChangedTexts texts;
  };

  // Both take the notes out of the result.
  /// @param wellFormed  whether the text is well-formed UTF-8
  ReadReport(impl::CsvResult& result, std::uint32_t usedCodePage, bool wellFormed);
  ReadReport(impl::JsonTableResult& result, std::uint64_t lines, const InputText& text);

  std::uint64_t ProblemCount() const {
    return (isWellFormed ? 0 : 1) + droppedLines.size() + longLines.size() + changes.size();
  }
  /// @param index  below `ProblemCount`
  std::string Problem(std::uint64_t index) const;

  std::string separator;
  bool hasHeader = false;
  std::uint32_t codePage;
  bool isWellFormed;
  std::uint64_t columnCount, lineCount, rowCount;
  std::vector<std::string> droppedLines;
  std::vector<impl::LongLine> longLines;
  std::vector<Change> changes;

 private:
  void TakeChanges(const impl::TableImpl& table, std::vector<impl::ColumnChanges>& byColumn);
};

}  // namespace Data::c
