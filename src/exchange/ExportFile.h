// Reading an export file: bytes into records, records into parts. Whatever the bytes are, this ends.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "device/Files.h"
#include "exchange/ExportFormat.h"

namespace inspector::exchange {

// Fifty times what the largest visit takes. A larger file is none, and is not read.
inline constexpr std::uint64_t kMostFileBytes = 64 * 1024 * 1024;

enum class ReadResult { Read, NotOpened, TooLarge, Broken };

// The whole file. Broken: it could not be read to its end.
ReadResult ReadExportFile(device::Files& files, const std::filesystem::path& file, std::string& bytes);

struct ExportRecords {
  std::vector<std::string_view> records;  // without their ends, in the order of the file
  bool isCutShort = false;                // the last one has no end; it counts all the same
  bool hasRest = false;                   // bytes stand behind a record of length 0, which ends the reading
};

// Views into `bytes`.
ExportRecords RecordsOf(std::string_view bytes);
// What stands between the field ends; part 0 is the tag. Never empty.
std::vector<TextView> RecordParts(TextView record);
// A part that is missing reads as empty.
TextView PartAt(const std::vector<TextView>& parts, std::size_t index);
// The tag of a record, without cutting the rest.
Text TagOf(std::string_view record);

// The first record of every export file: the header's tag and its field's end.
bool IsHeader(std::string_view record);

}  // namespace inspector::exchange
