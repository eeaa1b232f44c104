#pragma once

#include <map>

#include "CallersText.h"
#include "Records.h"

namespace Data::tests {

/// The state of an object that its operations show, as text.
std::string Describe(IObject* object);
std::string Describe(const _VARIANT& record);

/// Called whenever the library uses a text of the caller's own.
inline const auto kOnUse = std::make_shared<std::function<void()>>([] {});

/// A value of a script: a number, "1L" an Int64, "~a" a text object of the caller's own, a record
/// as `RecordOf` reads it ("#28" one whose type is a number), or else the text itself.
Variant ValueOf(const std::string& text);

/// A table of text, "a b; 1,x; 2": the names of its columns, then rows of values.
Ptr<ITable> TableOf(std::string_view text);

/// The objects of a script, which is a list of operations separated by ";":
///
///     Operation argument, argument     on the object under test
///     name.Operation                   on another object
///     name = Operation                 keeps the object that it returns
///     End, End name                    releases an object
///     References                       how many references others hold to "@"
///
/// Arguments are numbers, texts and values, values in parentheses ("(1 x)", "()"), objects by name,
/// "null", "cell" for the first cell of the table itself, and "same" for the destination before.
/// The table under test is called "self", its rows and columns "row" or "row0", "row1", "column"
/// and so on, its header "header".
class Scene {
 public:
  template <class Interface>
  explicit Scene(const Ptr<Interface>& object) : self(object.Get()), owner(object) {}

  IObject* const self;
  Ptr<IObject> owner;  ///< of `self`; null after End
  std::map<std::string, Variant> objects;

  /// Runs a script. A failure must leave the object and all destinations as they were.
  /// @return what the operations return or fail with, separated by " ~ "; "no" for false and null
  std::string Answers(std::string_view script);
  /// Runs a script while callbacks come, until one of them ends the object.
  void Run(std::string_view script);

  IObject* Find(const std::string& name) const;
  /// An object by its name, or what it holds.
  std::string Shown(IObject* object) const;
  std::string Shown(const _VARIANT& value) const;

 private:
  std::string AnswerOf(const std::string& step, bool isSilent);
};

/// Runs every operation of a section of a data file with every action of another inside it: once
/// for each use of a caller's text. No reference may be lost.
/// @param make   creates the objects
/// @param check  what must hold afterwards
void CallBackAtEveryUse(const char* file, const std::string& operations, const std::string& actions,
                        const std::function<Scene()>& make,
                        const std::function<void(Scene&, const std::string& what)>& check);

}  // namespace Data::tests
