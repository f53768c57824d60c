// Prompts of a benchmark: nobody is there to answer, and whatever has to be told is a failed run.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "device/Prompts.h"

namespace inspector::bench {

[[noreturn]] inline void Fail(const std::string& what) {
  std::fprintf(stderr, "%s\n", what.c_str());
  std::exit(1);
}

class UnattendedPrompts : public device::Prompts {
public:
  device::Answer Show(const device::Message& message) override {
    if (!message.offer.empty()) return device::Answer::OkForAll;
    if (message.title == u"Alert") return device::Answer::Ok;
    Fail(device::ToUtf8(message.text));
  }
  std::optional<device::Text> AskText(const device::TextQuestion&) override { return std::nullopt; }
  std::optional<std::filesystem::path> AskSavePath(const device::SaveQuestion&) override {
    return std::nullopt;
  }
  std::optional<device::DatabasePaths> AskDatabasePaths(const device::DatabasePaths&) override {
    return std::nullopt;
  }
  std::unique_ptr<device::ProgressWindow> OpenProgress(const device::Text&, bool) override { return nullptr; }
};

}  // namespace inspector::bench
