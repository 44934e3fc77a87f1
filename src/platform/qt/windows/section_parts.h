#pragma once

#include <initializer_list>

class QCheckBox;
class QLabel;
class QVBoxLayout;
class QWidget;

namespace velmora {

struct CheckBox;
struct Label;

/// What the sections of the Options page are made of. Fills a widget from top to bottom, which is also the order of the
/// key Tab.
class SectionParts {
 public:
  explicit SectionParts(QWidget* section);

  /// Into which the parts go, and which owns them.
  QWidget* section() const { return section_; }

  void add(QWidget* part);
  void addCentred(QWidget* part);
  void addUnderTick(QWidget* part);  ///< where the text of a check box begins
  void addTick(CheckBox& tick, const char* name, char letter);
  void addGap();
  void addStretch();

  /// A text that takes as many lines as it needs.
  QLabel* makeNote(Label& label, const char* name);

  /// A part of a sentence in front of an input, to which its letter leads. `spoken` names the input to those who can't
  /// see the sentence.
  QLabel* makeWords(Label& label, const char* name, char letter, QWidget* input, const char* spoken);

  /// Parts side by side, as those of a sentence.
  QWidget* makeRow(std::initializer_list<QWidget*> parts);

  /// Says of a group's buttons what they choose, in front of their names.
  static QWidget* nameOptions(QWidget* options, const char* spoken);

 private:
  QWidget* section_;
  QVBoxLayout* column_;
};

}  // namespace velmora
