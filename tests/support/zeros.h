// Flat functions called with nothing but a handle, to see what they answer when it is dead. Those
// with a decorated name have another calling convention and are called by hand.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <tuple>

#include "tqutil/config.h"

namespace tq::test {

// Calls a function with a handle, its last argument, behind zeros and null pointers.
template <class Result, class... Arguments>
Result call_with_zeros(Result(TQ_CALL* function)(Arguments...), std::int32_t handle) {
  std::tuple<Arguments...> arguments{};
  std::get<sizeof...(Arguments) - 1>(arguments) = handle;
  return std::apply(function, arguments);
}

// Each of the functions answers a dead handle so.
template <class Answer, class... Functions>
void expect_answers(std::int32_t dead, Answer expected, Functions... functions) {
  int place = 0;
  const auto expect_answer = [&](auto* function) {
    EXPECT_EQ(call_with_zeros(function, dead), expected)
        << "handle " << dead << ", function " << place++;
  };
  (expect_answer(functions), ...);
}

}  // namespace tq::test
