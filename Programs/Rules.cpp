#include "Rules.h"

#include <LayerData/Print.h>

#include <algorithm>
#include <compare>

namespace program {

namespace {

using layerdata::Value;

// -- Types --

bool IsInteger(const Value& cell) {
  using layerdata::detail::Number;
  const Number number = layerdata::detail::NumberOf(cell.Record());
  return number.kind == Number::Kind::Real
             ? layerdata::detail::WholeNumber(number.real).kind != Number::Kind::None
             : number.kind != Number::Kind::None;
}

/// Delimited text has no type of its own for truth.
bool IsTruth(const Value& cell) {
  if (cell.Type() == LD_VALUE_TYPE_BOOL) return true;
  std::string text = cell.ToText();
  for (char& c : text) c = static_cast<char>(c | 0x20);
  return text == "true" || text == "false";
}

bool IsJson(const Value& cell) {
  if (cell.Type() == LD_VALUE_TYPE_JSON_DOCUMENT) return true;
  try {
    layerdata::Json::Parse(cell.ToText());
    return true;
  } catch (const layerdata::Error&) {
    return false;
  }
}

const char* TypeProblem(ld_value_type type, const Value& cell) {
  switch (type) {
    case LD_VALUE_TYPE_INT64:
      return IsInteger(cell) ? "" : "is no integer";
    case LD_VALUE_TYPE_DOUBLE:
      return cell.IsNumber() ? "" : "is no number";
    case LD_VALUE_TYPE_BOOL:
      return IsTruth(cell) ? "" : "is neither true nor false";
    case LD_VALUE_TYPE_DATE_TIME:
      return cell.Type() == LD_VALUE_TYPE_DATE_TIME ? "" : "is no date";
    case LD_VALUE_TYPE_JSON_DOCUMENT:
      return IsJson(cell) ? "" : "is no JSON";
    default:
      return "";
  }
}

// -- Width --

std::size_t CountCharacters(std::string_view text) {
  return static_cast<std::size_t>(
      std::ranges::count_if(text, [](char c) { return (c & 0xC0) != 0x80; }));
}

// -- Allowed values --

/// Where the next character of UTF-8 begins.
std::size_t NextCharacter(std::string_view text, std::size_t at) {
  do ++at;
  while (at < text.size() && (text[at] & 0xC0) == 0x80);
  return at;
}

/// "%" stands for any characters, "_" for one character.
bool IsLike(std::string_view text, std::string_view pattern) {
  std::size_t at = 0, in = 0, star = std::string_view::npos, retry = 0;
  while (at < text.size()) {
    if (in < pattern.size() && pattern[in] == '%') {
      star = in++, retry = at;
    } else if (in < pattern.size() && pattern[in] == '_') {
      ++in, at = NextCharacter(text, at);
    } else if (in < pattern.size() && pattern[in] == text[at]) {
      ++in, ++at;
    } else if (star != std::string_view::npos) {
      in = star + 1, at = retry = NextCharacter(text, retry);
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('%', in) == std::string_view::npos;
}

/// Whether an entry names values. The others are limits.
bool NamesValues(const AllowedValue& allowed) {
  return allowed.comparison == LD_COMPARISON_OPERATOR_NONE ||
         allowed.comparison == LD_COMPARISON_OPERATOR_EQUAL ||
         allowed.comparison == LD_COMPARISON_OPERATOR_LIKE;
}

bool Holds(const Value& cell, const AllowedValue& allowed) {
  const std::partial_ordering order = cell <=> allowed.value;
  switch (allowed.comparison) {
    case LD_COMPARISON_OPERATOR_GREATER:
      return order > 0;
    case LD_COMPARISON_OPERATOR_LESS:
      return order < 0;
    case LD_COMPARISON_OPERATOR_GREATER_OR_EQUAL:
      return order >= 0;
    case LD_COMPARISON_OPERATOR_LESS_OR_EQUAL:
      return order <= 0;
    case LD_COMPARISON_OPERATOR_NOT_EQUAL:
      return order != 0;
    case LD_COMPARISON_OPERATOR_LIKE:
      return IsLike(cell.ToText(), allowed.value.ToText());
    case LD_COMPARISON_OPERATOR_NOT_LIKE:
      return !IsLike(cell.ToText(), allowed.value.ToText());
    default:
      return order == 0;
  }
}

/// A value is allowed if it is one that an entry names, or if there are limits and it keeps all.
bool IsAllowed(const Value& cell, const std::vector<AllowedValue>& allowed) {
  bool hasLimits = false, keepsLimits = true;
  for (const AllowedValue& entry : allowed) {
    const bool holds = Holds(cell, entry);
    if (NamesValues(entry)) {
      if (holds) return true;
    } else {
      hasLimits = true;
      keepsLimits &= holds;
    }
  }
  return allowed.empty() || (hasLimits && keepsLimits);
}

}  // namespace

std::string ProblemOf(const ColumnRule& rule, const Value& cell) {
  if (const std::string problem = TypeProblem(rule.type, cell); !problem.empty()) return problem;
  if (rule.width > 0 && CountCharacters(cell.ToText()) > static_cast<std::size_t>(rule.width))
    return "is longer than " + std::to_string(rule.width) + " characters";
  return IsAllowed(cell, rule.allowed) ? "" : "is not an allowed value";
}

}  // namespace program
