#include "exchange/ExportFile.h"

#include <algorithm>

#include "device/CodePage.h"

namespace inspector::exchange {
namespace {

constexpr char kFieldEndByte = '\xA4';

}  // namespace

ReadResult ReadExportFile(device::Files& files, const std::filesystem::path& file, std::string& bytes) {
  constexpr std::size_t kBlock = 256 * 1024;
  bytes.clear();
  const auto input = files.OpenForReading(file);
  if (!input) return ReadResult::NotOpened;
  if (input->Size().value_or(0) > kMostFileBytes) return ReadResult::TooLarge;
  for (;;) {
    const std::size_t before = bytes.size();
    bytes.resize(before + kBlock);
    const std::int64_t count = input->Read(bytes.data() + before, kBlock);
    bytes.resize(before + static_cast<std::size_t>(std::max<std::int64_t>(count, 0)));
    if (count < 0) return ReadResult::Broken;
    if (bytes.size() > kMostFileBytes) return ReadResult::TooLarge;  // it grows while it is read
    if (static_cast<std::size_t>(count) < kBlock) return ReadResult::Read;
  }
}

ExportRecords RecordsOf(std::string_view bytes) {
  ExportRecords found;
  while (!bytes.empty()) {
    const std::size_t end = std::min(bytes.find(kRecordEndByte), bytes.size());
    const std::string_view record = bytes.substr(0, end);
    found.isCutShort = end == bytes.size();
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
    if (record.empty()) {
      found.hasRest = !bytes.empty();
      break;
    }
    found.records.push_back(record);
  }
  return found;
}

std::vector<TextView> RecordParts(TextView record) {
  std::vector<TextView> parts;
  for (;;) {
    const std::size_t end = record.find(kFieldEnd);
    parts.push_back(record.substr(0, end));
    if (end == TextView::npos) return parts;
    record.remove_prefix(end + 1);
  }
}

TextView PartAt(const std::vector<TextView>& parts, std::size_t index) {
  return index < parts.size() ? parts[index] : TextView();
}

Text TagOf(std::string_view record) {
  return device::FromCodePage(record.substr(0, record.find(kFieldEndByte)));
}

bool IsHeader(std::string_view record) {
  return device::FromCodePage(record) == Text(kHeaderTag) + kFieldEnd;
}

}  // namespace inspector::exchange
