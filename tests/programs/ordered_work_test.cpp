#include "programs/ordered_work.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>

namespace vesk {
namespace {

TEST(OrderedWork, ResultsComeInOrderAndFewWait) {
  for (const int jobs : {1, 2, 3}) {
    constexpr std::size_t kCount = 200;
    std::atomic<std::size_t> begun = 0;
    OrderedWork<std::unique_ptr<std::size_t>> work(kCount, jobs, [&](std::size_t number) {
      ++begun;
      for (std::size_t turn = 0; turn < (number * 7) % 5; ++turn) std::this_thread::yield();  // out of step
      return std::make_unique<std::size_t>(number);
    });
    for (std::size_t i = 0; i < kCount; ++i) {
      ASSERT_EQ(*work.Next(), i) << jobs;
      ASSERT_LE(begun, i + 1 + 4 * static_cast<std::size_t>(jobs)) << jobs;
    }
    EXPECT_EQ(begun, kCount) << "each once";
  }
}

TEST(OrderedWork, WhatNobodyTakesIsGivenUp) {
  std::atomic<int> underWay = 0;
  {
    OrderedWork<int> work(1000, 4, [&](std::size_t number) {
      ++underWay;
      std::this_thread::yield();
      --underWay;
      return static_cast<int>(number);
    });
    EXPECT_EQ(work.Next(), 0);
  }
  EXPECT_EQ(underWay, 0);
  const OrderedWork<int> none(0, 4, [](std::size_t) { return 0; });
}

}  // namespace
}  // namespace vesk
