#include "spell/SoundKey.h"

#include <array>

#include "spell/Letters.h"

namespace inspector::spell {
namespace {

std::array<char, 256> MakePlainLetters() {
  std::array<char, 256> plain;
  for (unsigned byte = 0; byte < plain.size(); ++byte) plain[byte] = Letters::Lower(static_cast<char>(byte));
  constexpr std::pair<char, std::string_view> kAccented[] = {
      {'a', "\xE0\xE1\xE2\xE3\xE4\xE5\xE6"},
      {'c', "\xE7"},
      {'e', "\xE8\xE9\xEA\xEB"},
      {'i', "\xEC\xED\xEE\xEF"},
      {'n', "\xF1"},
      {'o', "\xF2\xF3\xF4\xF5\xF6\xF8\x9C"},
      {'u', "\xF9\xFA\xFB\xFC"},
      {'y', "\xFD\xFF"},
      {'s', "\x9A\xDF"},
      {'z', "\x9E"},
  };
  for (const auto& [letter, bytes] : kAccented) {
    for (const char byte : bytes) {
      plain[static_cast<std::uint8_t>(byte)] = letter;
      plain[static_cast<std::uint8_t>(Letters::Upper(byte))] = letter;
    }
  }
  return plain;
}

bool IsSoftener(char letter) {
  return letter == 'e' || letter == 'i' || letter == 'y';
}

constexpr char kCedilla = '\xE7';

// One word on its way to a key.
class Listener {
public:
  explicit Listener(std::string_view word) {
    for (const char byte : word) {
      const char letter = Letters::Lower(byte) == kCedilla ? 's' : PlainLetter(byte);
      if (letter >= 'a' && letter <= 'z') m_Letters += letter;
    }
  }

  std::string Key() {
    SkipSilentBeginning();
    for (const std::size_t begin = m_At; m_At < m_Letters.size(); ++m_At) Hear(m_At == begin);
    return std::move(m_Key);
  }

private:
  char Letter(std::size_t ahead) const {
    return m_At + ahead < m_Letters.size() ? m_Letters[m_At + ahead] : '\0';
  }
  char Before() const { return m_At > 0 ? m_Letters[m_At - 1] : '\0'; }
  bool Stands(std::string_view letters) const {
    return m_Letters.compare(m_At, letters.size(), letters) == 0;
  }
  void Sound(char sound, std::size_t more = 0) {
    if (m_Key.empty() || m_Key.back() != sound) m_Key += sound;
    m_At += more;
  }

  void SkipSilentBeginning() {
    for (const std::string_view silent : {"kn", "gn", "pn", "wr", "ps"})
      if (Stands(silent)) m_At = 1;
  }

  void Hear(bool isFirst) {
    const char letter = Letter(0);
    switch (letter) {
      case 'a':
      case 'e':
      case 'i':
      case 'o':
      case 'u':
        if (isFirst) Sound('A');
        break;
      case 'c':
        HearC();
        break;
      case 'd':
        if (Letter(1) == 'g' && IsSoftener(Letter(2))) return Sound('j', 1);
        Sound('t');
        break;
      case 'g':
        HearG(isFirst);
        break;
      case 'h':
        if (isFirst) Sound('h');
        break;
      case 'p':
        if (Letter(1) == 'h') return Sound('f', 1);
        Sound('p');
        break;
      case 'q':
        Sound('k');
        break;
      case 's':
        if (Stands("sch")) return Sound('s');
        if (Letter(1) == 'h') return Sound('S', 1);
        if ((Stands("sio") || Stands("sia")) && !isFirst) return Sound('S', 1);
        Sound('s');
        break;
      case 't':
        if (Letter(1) == 'h') return Sound('0', 1);
        if (Stands("tch")) return;
        if (Stands("tio") || Stands("tia")) return Sound('S', 1);
        Sound('t');
        break;
      case 'v':
        Sound('f');
        break;
      case 'w':
      case 'y':
        if (isFirst) Sound(letter == 'y' ? 'A' : letter);
        break;
      case 'x':
        Sound('k');
        Sound('s');
        break;
      case 'z':
        Sound('s');
        break;
      default:
        Sound(letter);
    }
  }

  void HearC() {
    if (Letter(1) == 'h') return Sound(Before() == 's' ? 'k' : 'C', 1);
    if (Stands("cia") || Stands("cio") || Stands("ciou")) return Sound('S', 1);
    Sound(IsSoftener(Letter(1)) ? 's' : 'k');
  }

  void HearG(bool isFirst) {
    if (Letter(1) == 'h' && !isFirst) {
      ++m_At;  // "height"
      return;
    }
    if (Letter(1) == 'n' && Letter(2) == '\0') return;  // "sign"
    if (IsSoftener(Letter(1))) return Sound('j');
    Sound('g');
  }

  std::string m_Letters;
  std::size_t m_At = 0;
  std::string m_Key;
};

}  // namespace

char PlainLetter(char byte) {
  static const std::array<char, 256> kPlain = MakePlainLetters();
  return kPlain[static_cast<std::uint8_t>(byte)];
}

std::string SoundKey(std::string_view word) {
  return Listener(word).Key();
}

}  // namespace inspector::spell
