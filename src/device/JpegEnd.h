// Whether a photograph was cut short, told while its bytes pass by on their way into a report.
#pragma once

#include <cstdint>
#include <string_view>

namespace inspector::device {

class JpegEnd {
public:
  // The bytes of one file, block after block.
  void Take(std::string_view bytes);
  // After the last of them: a JPEG whose picture, or what comes before it, breaks off. Bytes behind the end
  // are usual; other kinds of files are none of this class's business.
  bool IsCutShort() const { return m_IsJpeg && m_State != State::End; }
  // No further bytes change that.
  bool IsDecided() const { return m_State == State::End; }

private:
  enum class State { Start, Marker, Length, Segment, Scan, End };

  void TakeByte(unsigned byte);
  void BeginSegment(unsigned byte);

  State m_State = State::Start;
  bool m_IsJpeg = false;
  unsigned m_Last = 0;     // the byte before, or what was read of a length
  int m_Count = 0;         // bytes since the state began
  unsigned m_Marker = 0;   // of the segment
  std::size_t m_Left = 0;  // bytes of the segment
};

}  // namespace inspector::device
