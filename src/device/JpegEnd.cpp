#include "device/JpegEnd.h"

#include <algorithm>

namespace inspector::device {
namespace {

constexpr unsigned kFill = 0xFF;
constexpr unsigned kStart = 0xD8;
constexpr unsigned kEnd = 0xD9;
constexpr unsigned kScan = 0xDA;
// Markers without a segment.
constexpr unsigned kAlone = 0x01;
constexpr unsigned kFirstRestart = 0xD0;
constexpr unsigned kLastRestart = 0xD7;

}  // namespace

void JpegEnd::Take(std::string_view bytes) {
  while (!bytes.empty() && m_State != State::End) {
    if (m_State == State::Segment) {
      const std::size_t size = std::min(m_Left, bytes.size());
      bytes.remove_prefix(size);
      m_Left -= size;
      if (m_Left == 0) m_State = m_Marker == kScan ? State::Scan : State::Marker;
    } else if (m_State == State::Scan) {
      // The end of a block may part the two bytes of the end mark.
      if (m_Last == kFill && static_cast<unsigned char>(bytes.front()) == kEnd) m_State = State::End;
      if (bytes.find("\xFF\xD9") != std::string_view::npos) m_State = State::End;
      m_Last = static_cast<unsigned char>(bytes.back());
      return;
    } else {
      TakeByte(static_cast<unsigned char>(bytes.front()));
      bytes.remove_prefix(1);
    }
  }
}

void JpegEnd::TakeByte(unsigned byte) {
  switch (m_State) {
    case State::Start:
      if (byte != (m_Count == 1 ? kStart : kFill)) {
        m_State = State::End;
      } else if (++m_Count == 3) {
        m_IsJpeg = true;
        m_State = State::Marker;
        m_Last = kFill;
      }
      break;
    case State::Marker:
      // Any number of FF may stand before a marker. What is none is no picture any more, and has no end.
      if (byte == kFill) {
        m_Last = kFill;
      } else if (m_Last == kFill) {
        BeginSegment(byte);
      }
      break;
    case State::Length:
      m_Left = m_Left << 8 | byte;
      if (++m_Count < 2) break;
      m_Left = m_Left < 2 ? 0 : m_Left - 2;  // counts its own two bytes
      m_Last = 0;
      m_State = m_Left > 0 ? State::Segment : m_Marker == kScan ? State::Scan : State::Marker;
      break;
    case State::Segment:
    case State::Scan:
    case State::End:
      break;
  }
}

void JpegEnd::BeginSegment(unsigned byte) {
  m_Last = 0;
  if (byte == kAlone || (byte >= kFirstRestart && byte <= kLastRestart)) return;
  m_Marker = byte;
  m_Left = 0;
  m_Count = 0;
  m_State = State::Length;
}

}  // namespace inspector::device
