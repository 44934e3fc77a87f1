#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "rules/decisions/rules.h"

namespace velmora {

/// What the Rules file gives back of a text ends at 2,047 characters. A name has room for marks around it. An entry has
/// its other words, and where every OR in its criteria becomes an AND, that grows by half.
inline constexpr int longestRuleName = 2000;
inline constexpr int longestCriteria = 1300;

/// An entry as the user builds it.
struct EntryParts {
  std::string Where;
  std::string Condition;
  std::string Criteria;
  std::string Boolean;  ///< "AND" or "OR"; of an entry that was taken apart, blank where it has none
  std::string Not;      ///< "NOT" or blank

  bool operator==(const EntryParts&) const = default;
};

/// A field that an entry can look at, and what goes with it.
struct WhereChoice {
  const char* where;
  std::span<const char* const> conditions;
  const char* prompt;
  bool takesCriteria;
};

std::span<const WhereChoice> whereChoices();

/// Null for a text that is no field.
const WhereChoice* choiceOf(std::string_view where);

/// The comparison that stays chosen where another field is: the one that was, if that field has it, else its first.
std::string keptCondition(const WhereChoice& choice, const std::string& condition);

/// An entry taken apart. All parts are blank where it can't be, or says what the builder can't.
EntryParts partsOf(const std::string& entry);

/// What stands in the builder can be made an entry.
bool isComplete(const EntryParts& parts);

/// Appends an entry; those beyond it that an undo has left stay. Throws subscriptFailure for an eleventh.
void addEntry(WorkingRule& rule, const EntryParts& parts);

/// Brings all entries to one conjunction. Every "OR" in their texts becomes an "AND", or the other way round, wherever
/// it stands: a word of the criteria that holds those capitals changes with it.
void rewriteConjunctions(Rule& rule, std::string_view conjunction);

/// Takes all entries away, with nothing left to redo.
void clearEntries(WorkingRule& rule);

/// Takes the last entry away for as long as no other takes its slot, and brings it back. Nothing where there is none.
void undoEntry(WorkingRule& rule);
void redoEntry(WorkingRule& rule);

/// How many entries there are, for the user.
std::string entriesText(const Rule& rule);

/// What is to be said beside the builder while `parts` stand in it and the rule's last entry is `last` (blank where
/// there is none): that the criteria can only fail, or that it isn't in the rule yet. Blank where nothing is.
std::string criteriaNotice(const EntryParts& parts, const EntryParts& last);

}  // namespace velmora
