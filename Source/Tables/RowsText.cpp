#include "Tables/RowsText.h"

#include <algorithm>
#include <vector>

#include "Tables/TableImpl.h"

namespace Data::impl {

namespace {

/// Rows that one part of the job writes: enough to make the cost of a part negligible, few enough
/// that their text stays in the cache until it is copied.
constexpr std::size_t kCellsPerChunk = std::size_t{1} << 14;
/// More chunks than parts make a wave longer, so that it matters less that threads wait at its end.
constexpr std::size_t kChunksPerPart = 2;
/// What a cell typically takes as text.
constexpr std::size_t kBytesPerCell = 8;

struct Chunk {
  std::size_t next = 0, end = 0;  // the rows still to be written
  TextBuffer text;

  bool IsComplete() const { return next == end; }
  void Write(const TableImpl& table, const TableCursor& columns, const RowFormat& format);
};

void Chunk::Write(const TableImpl& table, const TableCursor& columns, const RowFormat& format) {
  // Chunks of other threads are in the same cache line.
  Chunk chunk = std::move(*this);
  for (; chunk.next != chunk.end; ++chunk.next) {
    const std::size_t size = chunk.text.Size();
    PlainRow row(columns, *table.Rows()[chunk.next]);
    if (chunk.next != 0) chunk.text.Append(format.Between());
    if (format.Append(row, chunk.text)) continue;
    chunk.text.CutTo(size);
    break;
  }
  *this = std::move(chunk);
}

std::size_t RowsPerChunk(std::size_t rowCount, std::size_t width, std::size_t partCount) {
  const std::size_t most = std::max<std::size_t>(kCellsPerChunk / width, 1);
  return std::clamp<std::size_t>((rowCount + partCount - 1) / partCount, 1, most);
}

/// Chunks that are written at the same time. Between two waves only the calling thread runs.
class Wave {
 public:
  /// @param most  number of chunks
  explicit Wave(std::size_t most) : chunks_(most) {}

  bool IsEmpty() const { return count_ == 0; }
  std::size_t Count() const { return count_; }
  Chunk& operator[](std::size_t i) { return chunks_[i]; }

  /// Takes rows from `next` to `end`.
  /// @return the first row that it did not take
  std::size_t Cut(std::size_t next, std::size_t end, std::size_t rowsPerChunk);
  /// Drops the chunks after the first incomplete one.
  /// @return the first row that was not written
  std::size_t DropAfterIncomplete();
  std::size_t TextSize() const;
  void MoveTo(TextOutput& output);

 private:
  std::vector<Chunk> chunks_;
  std::size_t count_ = 0;
};

std::size_t Wave::Cut(std::size_t next, std::size_t end, std::size_t rowsPerChunk) {
  for (count_ = 0; count_ < chunks_.size() && next < end; ++count_) {
    chunks_[count_].next = next;
    chunks_[count_].end = next += std::min(rowsPerChunk, end - next);
  }
  return next;
}

std::size_t Wave::DropAfterIncomplete() {
  const auto begin = chunks_.begin(), end = begin + static_cast<std::ptrdiff_t>(count_);
  const auto isIncomplete = [](const Chunk& chunk) { return !chunk.IsComplete(); };
  const auto last = std::find_if(begin, end, isIncomplete);
  if (last != end) count_ = static_cast<std::size_t>(last - begin) + 1;
  return chunks_[count_ - 1].next;
}

std::size_t Wave::TextSize() const {
  std::size_t size = 0;
  for (std::size_t i = 0; i < count_; ++i) size += chunks_[i].text.Size();
  return size;
}

void Wave::MoveTo(TextOutput& output) {
  for (std::size_t i = 0; i < count_; ++i) {
    output.Append(chunks_[i].text.View());
    chunks_[i].text.Clear();
  }
  count_ = 0;
}

/// Writes the rows of the library's own table in waves. While a wave is being written, the previous
/// one goes to the output.
/// @return the number of rows written: all, or those before the first that cannot be read in place
std::size_t WritePlainRows(const TableImpl& table, const TableCursor& columns,
                           const RowFormat& format, Core::Parts& parts, TextOutput& output) {
  const std::size_t width = std::max<std::size_t>(columns.ColumnCount(), 1);
  const std::size_t partCount = parts.CountFor(table.RowCount() * width * kBytesPerCell);
  const std::size_t rowsPerChunk = RowsPerChunk(table.RowCount(), width, partCount);
  const std::size_t chunkCount = partCount == 1 ? 1 : kChunksPerPart * partCount;
  Wave wave(chunkCount), previous(chunkCount);
  std::size_t done = 0;
  for (bool isStopped = false; !isStopped;) {
    const std::size_t first = done;
    const std::size_t cut = wave.Cut(first, table.RowCount(), rowsPerChunk);
    const std::size_t outputs = previous.IsEmpty() ? 0 : 1;
    parts.Run(outputs + wave.Count(), [&](std::size_t i) {
      if (i < outputs) {
        previous.MoveTo(output);
      } else {
        wave[i - outputs].Write(table, columns, format);
      }
    });
    if (wave.IsEmpty()) break;
    done = wave.DropAfterIncomplete();
    isStopped = done != cut;
    if (first == 0 && done != 0) output.Expect(wave.TextSize() * table.RowCount() / done);
    std::swap(wave, previous);
    parts.Advance(done - first);
  }
  previous.MoveTo(output);
  return done;
}

/// Writes the remaining rows on the calling thread.
/// @return whether there was one
bool WriteRowsInTurn(TableCursor& table, bool isFirst, const RowFormat& format, Core::Parts& parts,
                     TextOutput& output) {
  TextBuffer text;
  std::size_t rows = 0;
  const auto pass = [&] {
    output.Append(text.View());
    text.Clear();
    parts.Advance(std::exchange(rows, 0));
  };
  bool hasRow = false;
  for (; table.NextRow(); hasRow = true, ++rows) {
    if (!isFirst || hasRow) text.Append(format.Between());
    format.Append(table, text);
    if (text.Size() > Core::Parts::kStep) pass();
  }
  pass();
  return hasRow;
}

}  // namespace

bool WriteRows(TableCursor& table, const RowFormat& format, Core::Parts& parts,
               TextOutput& output) {
  std::size_t done = 0;
  if (const TableImpl* const own = table.OwnTable()) {
    done = WritePlainRows(*own, table, format, parts, output);
    if (done == own->RowCount()) return done != 0;
    table.SkipTo(done);
  }
  return WriteRowsInTurn(table, done == 0, format, parts, output) || done != 0;
}

}  // namespace Data::impl
