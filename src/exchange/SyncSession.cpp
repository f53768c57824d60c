#include "exchange/SyncSession.h"

#include <algorithm>
#include <array>

#include "data/UniqueIDTable.h"
#include "device/CodePage.h"
#include "device/Format.h"
#include "exchange/ExportFormat.h"
#include "inspection/DocTypeChange.h"

namespace inspector::exchange {
namespace {

using device::Format;
using std::chrono::steady_clock;

constexpr TextView kTitle = u"Connection to Server";
constexpr std::size_t kMostHostBytes = 255;
// A window that comes and goes at once only disturbs.
constexpr std::chrono::milliseconds kUntilShown(700);
// So long the server may take to finish the record in which the person wants to stop.
constexpr std::chrono::seconds kForTheRecord(5);
// A type begins with the byte that alone means an empty value. What belongs to it was sent with it.
constexpr std::chrono::seconds kForTheRestOfAType(2);
constexpr std::size_t kLongestName = 60;

Text& TextColumn(const data::InspectionTable& row, int ordinal) {
  return **std::get_if<Text*>(&row.Columns()[static_cast<std::size_t>(ordinal)].member);
}

TextView CaptionOf(int ordinal) {
  for (const ExportField& field : InspectionFields())
    if (field.ordinal == ordinal) return field.caption;
  return {};
}

Text Named(const data::InspectionTable& row) {
  const Text number = row.m_InspectionNum.empty() ? Text(u"without a number") : row.m_InspectionNum;
  const TextView shown = device::Shortened(number, kLongestName);
  return row.m_ClientName.empty()
             ? Text(shown)
             : Format(u"%s (%s)", shown, device::Shortened(row.m_ClientName, kLongestName));
}

}  // namespace

SyncSession::SyncSession(data::Workspace& workspace, SyncRequest request)
    : m_Workspace(workspace), m_Request(std::move(request)), m_Link([this] { return GivesUp(); }) {}

bool SyncSession::HasServer(const data::OptionsTable& options) {
  return options.m_Port != 0 && !options.m_UserName.empty() && !options.m_IPAddress.empty();
}

bool SyncSession::Run() {
  using End = SyncReport::End;
  // The server waits: what could not be stored is told at the end.
  const device::FaultLog::Silence silence(m_Workspace.GetMachine().faults);
  const data::OptionsTable& options = m_Workspace.Options();
  m_Report.server = Format(u"%s:%d", options.m_IPAddress, options.m_Port);
  m_Report.chosen = static_cast<int>(m_Request.send.size());
  const std::string host = device::ToCodePage(options.m_IPAddress).substr(0, kMostHostBytes);
  const ServerLink::Attempt attempt = m_Link.Connect(host, static_cast<std::uint16_t>(options.m_Port));
  m_Report.reason = device::FromUtf8(m_Link.Error());
  if (attempt == ServerLink::Attempt::NoSocket || attempt == ServerLink::Attempt::UnknownHost) {
    m_Progress.reset();
    m_Report.end = attempt == ServerLink::Attempt::NoSocket ? End::NoSocket : End::UnknownHost;
    return false;
  }
  if (attempt == ServerLink::Attempt::NotReached) {
    m_Progress.reset();
    m_Report.end = IsCancelled() ? End::Cancelled : End::NotReached;
    if (m_Report.end == End::NotReached)
      device::Alert(m_Workspace.GetPrompts(), u"ERROR:\r\rConnection timed out.");
    m_Link.Close();
    return true;
  }
  m_IsConnected = true;
  OpenProgress();
  ShowPhase(1, u"Logging in...", {});
  if (LogIn()) {
    ReceiveInspections();
    if (m_Report.end == End::Complete) SendInspections();
  }
  LogOut();
  m_Link.Close();
  return true;
}

void SyncSession::OpenProgress() {
  if (!m_Progress) m_Progress = m_Workspace.GetPrompts().OpenProgress(Text(kTitle), true);
  m_Progress->SetRange(0, 100);
}

void SyncSession::ShowPhase(int position, TextView status, TextView detail) {
  m_Progress->SetPosition(position);
  m_Progress->SetStatus(Text(status));
  m_Progress->SetDetail(Text(detail));
}

// Once it was, it stays so, also after the window has gone.
bool SyncSession::IsCancelled() {
  if (!m_CancelledAt && m_Progress && m_Progress->Cancelled()) m_CancelledAt = steady_clock::now();
  return m_CancelledAt.has_value();
}

bool SyncSession::GivesUp() {
  if (!m_IsConnected && !m_Progress && steady_clock::now() - m_Begun > kUntilShown) {
    OpenProgress();
    ShowPhase(0, u"Connecting...", {});
  }
  if (!IsCancelled()) return false;
  return !m_IsInRecord || steady_clock::now() - *m_CancelledAt > kForTheRecord;
}

bool SyncSession::SendText(std::string_view text) {
  if (m_Link.Send(text)) return true;
  m_Report.end = IsCancelled() ? SyncReport::End::Cancelled : SyncReport::End::Broken;
  m_Report.reason = device::FromUtf8(m_Link.Error());
  return false;
}

std::optional<std::string> SyncSession::ReceiveText(std::size_t most) {
  std::optional<std::string> reply = m_Link.Receive(most);
  if (reply) return reply;
  m_Report.end = IsCancelled() ? SyncReport::End::Cancelled : SyncReport::End::Broken;
  m_Report.reason = device::FromUtf8(m_Link.Error());
  return std::nullopt;
}

std::optional<SyncSession::Type> SyncSession::ReceiveType() {
  std::string bytes;
  std::array<char, 4> raw{};
  // The office sends them at once; a network may cut them all the same.
  while (bytes.size() < raw.size()) {
    const std::optional<std::string> piece = ReceiveText(raw.size() - bytes.size());
    if (!piece) return std::nullopt;
    bytes += *piece;
    if (bytes == std::string_view(&protocol::kEot, 1) && !m_Link.HasMore(kForTheRestOfAType)) return Type{};
  }
  std::copy(bytes.begin(), bytes.end(), raw.begin());
  return Type{protocol::Int32FromWire(raw)};
}

bool SyncSession::IsConfirmed(std::string_view command, const Text& value) {
  if (!SendText(std::string(command) + protocol::ToWire(value) + protocol::kEndOfCommand)) return false;
  const std::optional<std::string> reply = ReceiveText();
  if (reply && *reply != protocol::kConfirmed) m_Report.end = SyncReport::End::Refused;
  return reply && *reply == protocol::kConfirmed;
}

bool SyncSession::LogIn() {
  const data::OptionsTable& options = m_Workspace.Options();
  return IsConfirmed(protocol::kUser, options.m_UserName) && IsConfirmed(protocol::kPass, options.m_Pswrd);
}

void SyncSession::ReceiveInspections() {
  if (!m_Request.receive) return;
  m_Report.hasAsked = true;
  if (!SendText(std::string(protocol::kReceive) + std::string(protocol::NameOf(*m_Request.receive)) +
                protocol::kEndOfCommand))
    return;
  const std::optional<std::string> reply = ReceiveText();
  if (!reply) return;
  m_Report.isAnswered = true;
  m_Report.offered = protocol::CountOf(*reply);
  const int count = m_Report.offered.value_or(0);
  for (int i = 0; i < count; ++i) {
    if (IsCancelled()) {
      m_Report.end = SyncReport::End::Cancelled;
      return;
    }
    // The bar has no more to tell than which half this is; the count has.
    ShowPhase(i / count * 50, u"Receiving Inspections...", Format(u"%d of %d", i + 1, count));
    m_IsInRecord = true;
    const bool isReceived = SendText(protocol::kNextInspection) && ReceiveOneInspection();
    m_IsInRecord = false;
    if (!isReceived) return;
  }
}

bool SyncSession::ReceiveOneInspection() {
  const std::optional<std::string> number = ReceiveText();
  if (!number) return false;
  std::vector<Text> texts;  // as kReceivedOrdinals has them
  Type type;
  for (const int ordinal : protocol::kReceivedOrdinals) {
    if (!SendText(protocol::kNextField)) return false;
    if (ordinal == protocol::kTypeOrdinal) {
      const std::optional<Type> value = ReceiveType();
      if (!value) return false;
      type = *value;
      texts.emplace_back();
    } else {
      const std::optional<std::string> value = ReceiveText();
      if (!value) return false;
      texts.push_back(protocol::FromWire(*value));
    }
  }
  Store(protocol::FromWire(*number), texts, type);
  return true;
}

// What the server has sent whole. A row that cannot be written has been told by the fault log; the session
// goes on.
void SyncSession::Store(const Text& number, const std::vector<Text>& texts, const Type& type) {
  data::Databases& databases = m_Workspace.GetDatabases();
  data::Transaction transaction(databases.Inspection());
  data::InspectionTable row(databases);
  // The number stands in the statement as it came. With a quote in it the statement would be another one, so
  // such a number is that of no row.
  if (!device::Contains(number, u"'"))
    row.OpenSQL(Format(u"SELECT * FROM Inspection WHERE InspectionNum = '%s'", number));
  const bool isKnown = row.RecordCount() > 0;
  const bool isReady = transaction.IsOpen() && !row.Failed() && (!isKnown || row.GetRecord(0));
  if (!isReady) {
    ++m_Report.notStored;
    return;
  }
  if (!isKnown) {
    row.PrepareNew();
    row.m_InspectionID = data::NextInspectionID(databases, u"Inspection");
    row.m_InspectionTypeID = inspection::kNoType;
  }
  row.m_InspectionNum = number;
  for (std::size_t n = 0; n < protocol::kReceivedOrdinals.size(); ++n) {
    const int ordinal = protocol::kReceivedOrdinals[n];
    if (ordinal == protocol::kTypeOrdinal) {
      if (type.key) row.m_InspectionTypeID = *type.key;
    } else if (ordinal != protocol::kDateOrdinal) {
      TextColumn(row, ordinal) = texts[n];
    } else if (std::optional<device::CalendarTime> date = protocol::DateFromWire(texts[n])) {
      if (isKnown) {  // the office plans the day, the inspector the hour
        date->hour = row.m_InspectionDate.hour;
        date->minute = row.m_InspectionDate.minute;
        date->second = row.m_InspectionDate.second;
        date->milliseconds = row.m_InspectionDate.milliseconds;
      }
      row.m_InspectionDate = *date;
    } else if (!texts[n].empty()) {
      Note(number, Format(u"its date %s is none and was passed over.", texts[n]));
    }
  }
  const bool isStored = row.Write() && transaction.Commit();
  if (isStored && device::Contains(number, u"'"))
    Note(number,
         u"it is added in every session, because a number with ' in it is not found again. The office "
         u"should give it another one.");
  ++(!isStored ? m_Report.notStored : isKnown ? m_Report.updated : m_Report.added);
}

void SyncSession::Note(const Text& number, TextView remark) {
  m_Report.notes.push_back(Format(u"Inspection %s: %s", device::Shortened(number, kLongestName), remark));
}

// Before any is announced, because what is announced has to come.
void SyncSession::ChooseWhatCanBeSent() {
  const data::ReadScope reading(m_Workspace.InspectionConnection());
  for (const std::int32_t inspectionID : m_Request.send)
    if (std::optional<Values> values = ValuesOf(inspectionID)) m_ToSend.push_back(std::move(*values));
}

std::optional<SyncSession::Values> SyncSession::ValuesOf(std::int32_t inspectionID) {
  data::InspectionTable row(m_Workspace.GetDatabases());
  row.OpenSQL(Format(u"SELECT * FROM Inspection WHERE InspectionID = %d", inspectionID));
  if (!row.GetRecord(0)) {
    m_Report.leftOut.push_back(Format(
        row.Failed() ? TextView(u"The inspection with the key %d was left out: it could not be read.")
                     : TextView(u"The inspection with the key %d was left out: it is not on this device."),
        inspectionID));
    return std::nullopt;
  }
  Values values;
  for (const int ordinal : protocol::kSentOrdinals) {
    const Text& text = TextColumn(row, ordinal);
    const TextView field = CaptionOf(ordinal);
    if (text.size() > protocol::kMaxValueBytes) {
      m_Report.leftOut.push_back(device::Phrase(
          u"Inspection %s was left out: its \"%s\" has %d characters, and the server takes %d at most. "
          u"Shorten it and send the inspection again.",
          Named(row), field, static_cast<int>(text.size()), static_cast<int>(protocol::kMaxValueBytes)));
      return std::nullopt;
    }
    if (device::Contains(text, Text(1, protocol::kEot))) {
      m_Report.leftOut.push_back(device::Phrase(
          u"Inspection %s was left out: its \"%s\" holds the character that ends a value on the way to the "
          u"server. Type it anew and send the inspection again.",
          Named(row), field));
      return std::nullopt;
    }
    if (!device::FitsCodePage(text))
      m_Report.notes.push_back(
          device::Phrase(u"Inspection %s: the server gets a ? for each letter of its \"%s\" that the "
                         u"connection has no room for.",
                         Named(row), field));
    values.push_back(protocol::ToWire(text));
  }
  return values;
}

void SyncSession::SendInspections() {
  ChooseWhatCanBeSent();
  if (m_ToSend.empty()) return;
  const int count = static_cast<int>(m_ToSend.size());
  if (!SendText(std::string(protocol::kSend) + std::to_string(count) + protocol::kEndOfCommand)) return;
  const std::optional<std::string> reply = ReceiveText();
  if (!reply) return;
  m_Report.isAnnounced = *reply == protocol::kConfirmed;
  if (!m_Report.isAnnounced) return;
  for (int i = 0; i < count; ++i) {
    if (IsCancelled()) {
      m_Report.end = SyncReport::End::Cancelled;
      return;
    }
    ShowPhase((i / count + 1) * 50, u"Sending Inspections...", Format(u"%d of %d", i + 1, count));
    m_IsInRecord = true;
    const bool isSent = SendOneInspection(m_ToSend[static_cast<std::size_t>(i)]) && ReceiveText();
    m_IsInRecord = false;
    if (!isSent) return;
    ++m_Report.sent;
  }
}

bool SyncSession::SendOneInspection(const Values& values) {
  const bool isSent = std::all_of(values.begin(), values.end(), [this](const std::string& value) {
    return SendText(protocol::Terminated(value)) && ReceiveText();
  });
  return isSent && SendText(protocol::Terminated(protocol::kDone));
}

void SyncSession::LogOut() {
  ShowPhase(100, u"Logging Out...", {});
  m_Progress.reset();
  // Nobody waits for what comes of it.
  m_Link.Send(protocol::kQuit);
}

}  // namespace inspector::exchange
