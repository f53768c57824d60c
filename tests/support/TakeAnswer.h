// Answers of a scripted person, waiting for the dialogs that ask.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <optional>
#include <utility>

namespace inspector::tests {

// The next answer. A question that nobody expected fails the test and gets none.
template <typename Value>
std::optional<Value> TakeAnswer(std::deque<Value>& queue, const char* about) {
  if (queue.empty()) {
    ADD_FAILURE() << about << " was not expected";
    return std::nullopt;
  }
  Value value = std::move(queue.front());
  queue.pop_front();
  return value;
}

}  // namespace inspector::tests
