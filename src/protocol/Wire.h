// The words, the order and the encoding of the synchronisation protocol, for the device and for the office.
//
// The device speaks, and waits for one reply to each message; "." is EOT.
//
//   device                   office
//   USER name\r              CNFM\r                 anything else: refused
//   PASS password\r          CNFM\r                 the same
//   RECV today\r             CONT 2\r               or "week", "all"; how many inspections follow
//     INSP\r                 2026-014               the number of the next inspection
//     FELD\r  (12 times)     12 Elm Street          the columns of kReceivedOrdinals after the first, bare;
//                                                   the type as four raw bytes, an empty text as EOT alone
//   SEND 2\r                 CNFM\r                 how many inspections follow
//     2026-014.              CNFM\r                 the columns of kSentOrdinals, one reply for each
//     DONE.                  CNFM\r                 stored
//   QUIT\r                                          both ends close
//
// A command ends in a carriage return, a value that is sent in EOT. A reply has no end of its own: it is what
// one receive call returns, and so is sent in one piece of at most kBufferBytes. Receiving and sending may
// each be left out. Texts travel in the device's code page, one byte for each unit.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "device/Calendar.h"
#include "device/Text.h"

namespace inspector::protocol {

using device::Text;
using device::TextView;

inline constexpr char kEot = 4;
inline constexpr std::size_t kBufferBytes = 2048;  // a message or a reply, whatever ends it included
inline constexpr std::size_t kMaxValueBytes = kBufferBytes - 1;

inline constexpr std::string_view kUser = "USER ";
inline constexpr std::string_view kPass = "PASS ";
inline constexpr std::string_view kReceive = "RECV ";
inline constexpr std::string_view kNextInspection = "INSP\r";
inline constexpr std::string_view kNextField = "FELD\r";
inline constexpr std::string_view kSend = "SEND ";
inline constexpr std::string_view kDone = "DONE";  // ends in EOT, as values do
inline constexpr std::string_view kQuit = "QUIT\r";
inline constexpr std::string_view kConfirmed = "CNFM\r";
inline constexpr std::string_view kCount = "CONT";
inline constexpr char kEndOfCommand = '\r';

// Which inspections the device asks for, by their date.
enum class Period { Today = 0, Week = 1, All = 2 };
std::string_view NameOf(Period period);
std::optional<Period> PeriodOf(std::string_view name);

// Ordinals of the table Inspection in the order in which they travel. The date and the type are the office's
// alone: they come with what is received and are never sent.
inline constexpr int kNumberOrdinal = 11;
inline constexpr int kTypeOrdinal = 16;
inline constexpr int kDateOrdinal = 6;
inline constexpr std::array kReceivedOrdinals = {1, 2, 3, 4, 5, 7, 13, 14, 15, 16, 17, 6};
inline constexpr std::array kSentOrdinals = {11, 1, 2, 3, 4, 5, 7, 13, 14, 15, 17};

// A character that the code page lacks becomes '?'; nothing is put behind the text.
std::string ToWire(TextView text);
// What a receive call returned; EOT alone is the empty text.
Text FromWire(std::string_view reply);
// A value as it is sent, with its EOT.
std::string Terminated(std::string_view value);
// A value as the office replies with it: bare, or EOT alone, since nothing cannot be sent.
std::string Reply(std::string_view value);

// Little endian, whatever the machine.
std::array<char, 4> Int32ToWire(std::int32_t value);
std::int32_t Int32FromWire(const std::array<char, 4>& bytes);

std::string CountReply(int count);
// The count in "CONT", one separator and the leading digits of the rest: 0 without digits, the largest int
// for more than that. Nothing for any other reply.
std::optional<int> CountOf(std::string_view reply);

// The day as "5/31/2026"; the zero date is empty.
std::string DateToWire(const device::CalendarTime& date);
// The day at 0:00. Blanks around it, leading zeros and a time behind a blank are allowed; anything that is no
// day of the calendar is nothing.
std::optional<device::CalendarTime> DateFromWire(TextView text);

}  // namespace inspector::protocol
