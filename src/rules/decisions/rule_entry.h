#pragma once

#include <string_view>

namespace velmora {

/// One condition of a rule, taken out of its text form
///
///     [AND |OR ]Where Condition [NOT ]Criteria
///
/// with one blank between the parts and one at the end. The texts are parts of the text that it was taken from.
struct RuleEntry {
  std::string_view Conjunction;  ///< "AND", "OR" or blank: how the entry joins those before it
  std::string_view Where;        ///< "From", "To", "Subject", "Body", "Attachment", "Size"
  std::string_view Condition;    ///< "Contains", "Equals", "IsPresent", "GreaterThan", "LessThan"
  std::string_view Not;          ///< "NOT" or blank
  std::string_view Criteria;     ///< may hold blanks, and begin with none
};

/// Throws invalidCallFailure where a blank is missing. Criteria that begin with "NOT " are taken for a negation.
RuleEntry parseRuleEntry(std::string_view description);

}  // namespace velmora
