#include "messages/sorting.h"

#include <gmock/gmock.h>

#include "app/shut_down.h"
#include "options/save_options.h"
#include "support/running_program.h"

namespace velmora {
namespace {

using testing::ElementsAre;

class Sorting : public test::RunningProgram {
 protected:
  void SetUp() override {
    addAccount("Work").messages = {mail("b", "1/20/2026 9:00:00 AM", 2600), mail("A", "4/2/2027 9:00:00 AM", 9600),
                                   mail("c", "1/3/2026 9:00:00 AM", 10600)};
  }

  void startAndCheck() {
    start();
    check();
  }

  static test::MemoryMessage mail(const std::string& subject, const std::string& date, std::size_t size) {
    return {subject, "Subject: " + subject + "\r\nDate: " + date + "\r\n\r\n" + std::string(size, 'x')};
  }

  ListView& list() { return program.frmMain.lvwEmail; }
  void clickHeader(const char* text) { list().ColumnClick(text); }

  std::vector<std::string> subjects() {
    std::vector<std::string> result;
    for (const auto& row : list().Rows()) result.push_back(row.Cells[2]);
    return result;
  }
  std::vector<std::string> headers() {
    std::vector<std::string> result;
    for (auto& column : list().Columns) result.push_back(column.Picture);
    return result;
  }
  std::string kept(const std::string& key) { return platform.tree.values["Settings\\Options/" + key]; }
};

TEST_F(Sorting, ACheckSortsByTheTextOfTheDateDescendingByDefault) {
  start();
  EXPECT_THAT(headers(), ElementsAre("Blank", "Blank", "Blank", "Descending", "Blank")) << "before any check";
  check();
  EXPECT_THAT(subjects(), ElementsAre("b", "c", "A")) << "January comes after April, whatever the year";
}

TEST_F(Sorting, AHeadersSecondClickTurnsTheOrderRound) {
  startAndCheck();
  clickHeader("Subject");
  EXPECT_THAT(subjects(), ElementsAre("c", "b", "A")) << "the order in force stays";
  clickHeader("Subject");
  EXPECT_THAT(subjects(), ElementsAre("A", "b", "c"));
  EXPECT_THAT(headers(), ElementsAre("Blank", "Blank", "Ascending", "Blank", "Blank"));
  clickHeader("Size");
  EXPECT_THAT(subjects(), ElementsAre("b", "A", "c")) << "3, 10 and 11 KB";
  QuitApplication(program);
  EXPECT_EQ(kept("SortColumnLastUsed"), "Size");
  EXPECT_EQ(kept("SortOrder"), "0");
}

TEST_F(Sorting, WhatIsNoColumnSortsNothing) {
  option("SortColumn", "0");  // last used, which a fresh tree doesn't know
  startAndCheck();
  EXPECT_THAT(subjects(), ElementsAre("b", "A", "c"));
  EXPECT_THAT(headers(), testing::Each("Blank"));
  clickHeader("Subject");
  EXPECT_THAT(subjects(), ElementsAre("c", "b", "A")) << "usable from the first click on";
}

TEST_F(Sorting, WithoutTheOptionNothingIsSorted) {
  option("MessageSort", "0");
  startAndCheck();
  clickHeader("Subject");
  EXPECT_THAT(subjects(), ElementsAre("b", "A", "c"));
  EXPECT_THAT(headers(), testing::Each("Blank"));
  program.EditOptions.MessageSort = 1;
  program.EditOptions.SortColumn = 3;
  SaveOptions(program);
  EXPECT_THAT(subjects(), ElementsAre("c", "b", "A"));
  program.EditOptions.MessageSort = 0;
  SaveOptions(program);
  EXPECT_THAT(headers(), testing::Each("Blank"));
  EXPECT_THAT(subjects(), ElementsAre("c", "b", "A")) << "the list stays as it is";
}

}  // namespace
}  // namespace velmora
