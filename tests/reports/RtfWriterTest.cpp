#include "reports/RtfWriter.h"

#include "support/StartedMachine.h"

namespace inspector::reports {
namespace {

constexpr unsigned kBlock = 1024 * 1024;  // of a picture, read at once

class PlainWriter : public RtfWriter {
public:
  using RtfWriter::RtfWriter;

  void WriteDocumentHeader() override { WriteOpening(); }

protected:
  void WriteFirstSectionTitle(TextView title) override {
    Write("(first)");
    WriteEscaped(title);
  }
};

// Keeps what is written.
struct MemoryOutput : device::OutputFile {
  bool Write(std::string_view bytes) override {
    content += bytes;
    return true;
  }
  bool Commit() override { return true; }
  std::string Error() const override { return {}; }

  std::string content;
};

class RtfWriterTest : public ::testing::Test, protected StartedMachine {
protected:
  // What was written since the last call.
  std::string Taken() { return std::exchange(m_Output.content, {}); }

  MemoryOutput m_Output;
  ReportPictures m_Pictures{m_Machine, u"\\Card\\", true};
  PlainWriter m_Writer{m_Output, m_Pictures, {}};
};

std::string Hex(std::string_view bytes) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string digits;
  for (const unsigned char byte : bytes) digits.append({kDigits[byte >> 4], kDigits[byte & 15]});
  return digits;
}

std::string Group(const std::string& scale, const std::string& digits) {
  return "{\\*\\shppict {\\pict\\picscalex" + scale + "\\picscaley" + scale +
         "\\piccropl0\\piccropr0\\piccropt0\\piccropb0\\jpegblip " + digits + "}}";
}

TEST_F(RtfWriterTest, ColumnsAreCutToWholeTwipsOneByOne) {
  using Positions = std::array<std::int32_t, 5>;
  EXPECT_EQ(ColumnPositions({0.5, 1.5, 1.25, 0.75, 2.5}), (Positions{612, 2772, 4572, 5652, 9252}));
  EXPECT_EQ(ColumnPositions({0.73, 1.23, 4.19, 0, 0}), (Positions{943, 2714, 8747, 8747, 8747}));
  EXPECT_EQ(ColumnPositions({0.0006, 0.0006, 0.0006, -1, 0}), (Positions{-108, -107, -106, -1546, -1546}));
  const double infinite = std::numeric_limits<double>::infinity();
  EXPECT_EQ(ColumnPositions({std::nan(""), infinite, infinite, 0, -infinite})[0],
            -108);  // from a damaged row
}

TEST_F(RtfWriterTest, APictureStandsInHexWithItsLastByteTwice) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes.push_back(static_cast<char>(i));
  // Around the sizes at which blocks end.
  for (const std::size_t size : {1U, 256U, 4096U, kBlock - 1, kBlock, kBlock + 1, 2 * kBlock}) {
    std::string picture;
    while (picture.size() < size) picture += bytes.substr(0, size - picture.size());
    m_Folder.Put("Card/a.jpg", picture);
    ASSERT_TRUE(m_Writer.WritePicture(u"\\Card\\a.jpg", -5));
    ASSERT_TRUE(Taken() == Group("-5", Hex(picture) + Hex(picture.substr(size - 1))) + " ") << size;
  }
  m_Folder.Put("Card/a.jpg", "");
  EXPECT_TRUE(m_Writer.WritePicture(u"\\Card\\a.jpg", 0));
  EXPECT_EQ(Taken(), Group("0", "") + " ");
  m_Folder.Put("Card/a.jpg", "ab");
  EXPECT_TRUE(m_Writer.WriteLogo(u"\\card\\A.JPG"));
  EXPECT_EQ(Taken(), "\\trowd\\trgaph108\\trleft-108\\trhdr\\cellx8747\\intbl\\ql " + Group("100", "616262") +
                         "\\cell\\row ");
  ASSERT_EQ(m_Pictures.Notes().size(), 2U) << "once for each name, whatever the size";
  EXPECT_TRUE(device::Contains(m_Pictures.Notes()[0], u"a.jpg is no picture"));
}

TEST_F(RtfWriterTest, WhatCannotBeReadLeavesNoHalfGroup) {
  m_Folder.Put("ERROR", "a file that is no picture");
  std::filesystem::create_directories(m_Folder / "Card/folder.jpg");
  m_Folder.Put("Card/a.jpg", std::string(kBlock + 5, 'x'));
  for (const Text path : {u"", u"ERROR", u"\\Card\\none.jpg", u"\\Card\\folder.jpg"}) {
    EXPECT_FALSE(m_Writer.WritePicture(path, 100)) << ToUtf8(path);
    EXPECT_FALSE(m_Writer.WriteLogo(path)) << ToUtf8(path);
  }
  m_Files.FailRead(1);
  EXPECT_FALSE(m_Writer.WritePicture(u"\\Card\\a.jpg", 100));
  EXPECT_EQ(Taken(), "");

  m_Files.FailRead(2);  // the card is pulled out meanwhile
  EXPECT_TRUE(m_Writer.WritePicture(u"\\Card\\a.jpg", 100));
  EXPECT_TRUE(Taken() == Group("100", Hex(std::string(kBlock + 1, 'x'))) + " ");
  EXPECT_EQ(m_Pictures.Notes().size(), 2U) << "no picture, and cut short";
}

}  // namespace
}  // namespace inspector::reports
