#include "reports/RtfWriter.h"

#include "ReportFixture.h"
#include "reports/RtfText.h"

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

// A writer on a device, its output in memory.
struct Desk {
  explicit Desk(RtfSettings settings = {}, bool withPictures = true)
      : pictures(device.GetMachine(), u"\\Card\\", withPictures),
        writer(output, pictures, std::move(settings)) {}

  // What was written since the last call.
  std::string Taken() { return std::exchange(output.content, {}); }

  tests::ReportDevice device;
  tests::MemoryOutput output;
  ReportPictures pictures;
  PlainWriter writer;
};

std::string Hex(std::string_view bytes) {
  std::string digits;
  for (const char byte : bytes) {
    constexpr char kDigits[] = "0123456789abcdef";
    digits += kDigits[static_cast<unsigned char>(byte) >> 4];
    digits += kDigits[static_cast<unsigned char>(byte) & 15];
  }
  return digits;
}

std::string Group(const std::string& scale, const std::string& digits) {
  return "{\\*\\shppict {\\pict\\picscalex" + scale + "\\picscaley" + scale +
         "\\piccropl0\\piccropr0\\piccropt0\\piccropb0\\jpegblip " + digits + "}}";
}

TEST(RtfWriterTest, ColumnsAreCutToWholeTwipsOneByOne) {
  using Positions = std::array<std::int32_t, 5>;
  EXPECT_EQ(ColumnPositions({0.5, 1.5, 1.25, 0.75, 2.5}), (Positions{612, 2772, 4572, 5652, 9252}));
  EXPECT_EQ(ColumnPositions({0.73, 1.23, 4.19, 0, 0}), (Positions{943, 2714, 8747, 8747, 8747}));
  EXPECT_EQ(ColumnPositions({0.0006, 0.0006, 0.0006, -1, 0}), (Positions{-108, -107, -106, -1546, -1546}));
  const double infinite = std::numeric_limits<double>::infinity();
  EXPECT_EQ(ColumnPositions({std::nan(""), infinite, infinite, 0, -infinite})[0],
            -108);  // from a damaged row
}

TEST(RtfWriterTest, APictureStandsInHexWithItsLastByteTwice) {
  Desk desk;
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes.push_back(static_cast<char>(i));
  // Around the sizes at which blocks end.
  for (const std::size_t size : {1U, 256U, 4096U, kBlock - 1, kBlock, kBlock + 1, 2 * kBlock}) {
    std::string picture;
    while (picture.size() < size) picture += bytes.substr(0, size - picture.size());
    desk.device.folder.Put("Card/a.jpg", picture);
    ASSERT_TRUE(desk.writer.WritePicture(u"\\Card\\a.jpg", -5));
    ASSERT_TRUE(desk.Taken() == Group("-5", Hex(picture) + Hex(picture.substr(size - 1))) + " ") << size;
  }
  desk.device.folder.Put("Card/a.jpg", "");
  EXPECT_TRUE(desk.writer.WritePicture(u"\\Card\\a.jpg", 0));
  EXPECT_EQ(desk.Taken(), Group("0", "") + " ");

  desk.device.folder.Put("Card/a.jpg", "ab");
  EXPECT_TRUE(desk.writer.WriteLogo(u"\\card\\A.JPG"));
  EXPECT_EQ(desk.Taken(), "\\trowd\\trgaph108\\trleft-108\\trhdr\\cellx8747\\intbl\\ql " +
                              Group("100", "616262") + "\\cell\\row ");
  ASSERT_EQ(desk.pictures.Notes().size(), 2U) << "once for each name, whatever the size";
  EXPECT_TRUE(device::Contains(desk.pictures.Notes()[0], u"a.jpg is no picture"));
}

TEST(RtfWriterTest, WhatCannotBeReadLeavesNoHalfGroup) {
  Desk desk;
  desk.device.folder.Put("ERROR", "a file that is no picture");
  std::filesystem::create_directories(desk.device.Home() / "Card" / "folder.jpg");
  desk.device.folder.Put("Card/a.jpg", std::string(kBlock + 5, 'x'));
  for (const Text path : {u"", u"ERROR", u"\\Card\\none.jpg", u"\\Card\\folder.jpg"}) {
    EXPECT_FALSE(desk.writer.WritePicture(path, 100)) << device::ToUtf8(path);
    EXPECT_FALSE(desk.writer.WriteLogo(path)) << device::ToUtf8(path);
  }
  desk.device.files.FailRead(1);
  EXPECT_FALSE(desk.writer.WritePicture(u"\\Card\\a.jpg", 100));
  EXPECT_EQ(desk.Taken(), "");

  desk.device.files.FailRead(2);  // the card is pulled out meanwhile
  EXPECT_TRUE(desk.writer.WritePicture(u"\\Card\\a.jpg", 100));
  EXPECT_TRUE(desk.Taken() == Group("100", Hex(std::string(kBlock + 1, 'x'))) + " ");
  EXPECT_EQ(desk.pictures.Notes().size(), 2U) << "no picture, and cut short";
}

TEST(RtfWriterTest, EachTagHasItsParagraphWithOrWithoutPicture) {
  const Text comments =
      u"***Picture-1;Scaling=50*** ***Sketch*** ***Path=\\none.jpg*** ***Picture-9*** "
      u"***Picture-1;Scaling=50*** ***Path=***";
  Desk desk;
  desk.device.folder.Put("Card/a.jpg", "a");
  desk.writer.WriteTagPictures(comments, u"1 Roof");
  EXPECT_EQ(desk.Taken(), "\\par " + Group("50", "6161") + " \\par \\par \\par \\par ");
  EXPECT_EQ(desk.device.prompts.Transcript(), std::vector<Text>{u"Alert: Unknown embedded tag found."});
  EXPECT_EQ(desk.pictures.Notes().size(), 5U) << "what is missing, unknown, or no picture";

  Desk without({}, false);
  without.device.folder.Put("Card/a.jpg", "a");
  without.writer.WriteTagPictures(comments, u"1 Roof");
  EXPECT_EQ(without.Taken(), "\\par \\par \\par \\par \\par ");
  EXPECT_EQ(without.device.prompts.Messages().size(), 1U);
  EXPECT_EQ(without.pictures.Notes(), std::vector<Text>{desk.pictures.Notes()[0]}) << "the unknown one";
}

}  // namespace
}  // namespace inspector::reports
