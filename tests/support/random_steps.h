#pragma once

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

#include "support/running_program.h"

namespace velmora::test {

/// The whole program beside a model of it, taken through random steps. The test's parameter is their seed.
class RandomSteps : public RunningProgram, public testing::WithParamInterface<unsigned> {
 protected:
  /// Steps, each with how often it is drawn beside the others.
  template <class Model>
  using Lots = std::vector<std::pair<unsigned, void (Model::*)()>>;

  virtual void compareAll() = 0;
  virtual void forgetStep() = 0;

  std::size_t random(std::size_t bound) { return random_() % bound; }
  bool oneIn(std::size_t bound) { return random(bound) == 0; }

  /// Until one leaves the program other than the model.
  template <class Model>
  void take(int steps, const Lots<Model>& lots) {
    std::vector<std::size_t> urn;
    for (std::size_t i = 0; i < lots.size(); ++i) urn.insert(urn.end(), lots[i].first, i);
    for (int step = 1; step <= steps && !HasFailure(); ++step) {
      const std::size_t drawn = urn[random(urn.size())];
      SCOPED_TRACE("seed " + std::to_string(GetParam()) + " step " + std::to_string(step) + " lot " +
                   std::to_string(drawn));
      (static_cast<Model*>(this)->*lots[drawn].second)();
      compareAll();
      forgetStep();
    }
  }

 private:
  std::mt19937 random_{GetParam()};
};

}  // namespace velmora::test
