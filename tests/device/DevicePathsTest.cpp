#include "device/DevicePaths.h"

#include "support/TestSupport.h"

namespace inspector::device {
namespace {

namespace fs = std::filesystem;

class DevicePathsTest : public testing::Test {
protected:
  DevicePathsTest() {
    m_Folder.Put("outside.jpg");
    m_Folder.Put("device/My Documents/Inspection_Data.cdb");
    m_Folder.Put("device/My Documents/\xC3\x89tude.rtf");
    m_Folder.Put("device/Photos/Roof.jpg");
    m_Folder.Put("device/Photos/ROOF.JPG");
    m_Folder.Put("device/Photos/roof.JPG");
    m_Folder.Put("device/photos/only here.jpg");
    m_Folder.Put("device/C:/x.jpg");
    m_Folder.Put("device/bad \xFF.jpg");
    fs::create_symlink("nowhere", m_Folder / "device/Dangling");
  }

  tests::TemporaryFolder m_Folder;
  DevicePaths m_Paths{m_Folder / "device"};
};

TEST_F(DevicePathsTest, DevicePathsLeadBelowTheRoot) {
  struct Case {
    const char16_t* device;
    const char* host;
  };
  const Case cases[] = {
      {u"\\My Documents\\Inspection_Data.cdb", "My Documents/Inspection_Data.cdb"},
      {u"/my documents\\INSPECTION_data.CDB", "My Documents/Inspection_Data.cdb"},
      {u"my documents\\\u00E9TUDE.RTF", "My Documents/\xC3\x89tude.rtf"},
      // What is missing keeps its spelling, below the folder that is found.
      {u"\\MY DOCUMENTS\\New Report.rtf", "My Documents/New Report.rtf"},
      {u"\\No Such\\Deeper\\File.txt", "No Such/Deeper/File.txt"},
      // The exact spelling wins, else the first in ascending order.
      {u"\\Photos\\roof.JPG", "Photos/roof.JPG"},
      {u"\\photos\\only here.jpg", "photos/only here.jpg"},
      {u"\\Photos\\rOOF.jpg", "Photos/ROOF.JPG"},
      {u"\\PHOTOS\\Roof.jpg", "Photos/Roof.jpg"},
      {u"\\DANGLING", "Dangling"},
      {u"\\bad \uFFFD.JPG", "bad \xFF.jpg"},
      // Dots are followed, but never above the root.
      {u"\\..\\..\\outside.jpg", "outside.jpg"},
      {u"\\Photos\\..\\.\\..\\my documents\\\\inspection_data.cdb", "My Documents/Inspection_Data.cdb"},
      {u"..", ""},
      {u"", ""},
      {u"\\My Documents\\", "My Documents"},
      {u"\\Photos\\...", "Photos/..."},
      // No drives: a folder of that name.
      {u"C:\\X.JPG", "C:/x.jpg"},
      {u"c:/x.jpg", "C:/x.jpg"},
      {u"D:\\x.jpg", "D:/x.jpg"},
      // A file is no folder.
      {u"\\c:\\x.jpg\\y", "C:/x.jpg/y"},
  };
  for (const Case& c : cases) {
    const fs::path expected = *c.host == 0 ? m_Paths.Root() : m_Paths.Root() / c.host;
    EXPECT_EQ(m_Paths.Resolve(c.device), expected) << ToUtf8(c.device);
  }
}

TEST_F(DevicePathsTest, NamesThatNoFileCanHaveDoNoHarm) {
  EXPECT_FALSE(fs::exists(m_Paths.Resolve(Text(u"\\Photos\\Roof.jpg\0.txt", 20))));
  EXPECT_EQ(m_Paths.Resolve(u"\\a\x01\nb"), m_Paths.Root() / "a\x01\nb");
  const Text tooLong(5000, u'x');
  EXPECT_EQ(m_Paths.Resolve(u"\\photos\\" + tooLong + u"\\y"),
            m_Paths.Root() / "photos" / std::string(5000, 'x') / "y");
  EXPECT_EQ(m_Paths.Resolve(Text{u'\\', 0xD800}), m_Paths.Root() / "\xEF\xBF\xBD");
}

TEST_F(DevicePathsTest, APersonMayTypeHostPaths) {
  const fs::path outside = m_Folder / "outside.jpg";
  const Text typed = FromUtf8(outside.native());
  EXPECT_EQ(m_Paths.ResolveTyped(typed), outside);
  EXPECT_EQ(m_Paths.ResolveTyped(u"/Photos/roof.JPG"), "/Photos/roof.JPG");
  EXPECT_EQ(m_Paths.ResolveTyped(u"\\PHOTOS\\Roof.jpg"), m_Paths.Root() / "Photos/Roof.jpg");
  EXPECT_EQ(m_Paths.ResolveTyped(u"report.rtf"), fs::current_path() / "report.rtf");
  EXPECT_EQ(m_Paths.ResolveTyped(u"../report.rtf"), fs::current_path() / "../report.rtf");
  EXPECT_EQ(m_Paths.ResolveTyped(u""), fs::path());

  EXPECT_EQ(m_Paths.ResolveStored(typed), outside);
  EXPECT_EQ(m_Paths.ResolveStored(u"PHOTOS/Roof.jpg"), m_Paths.Root() / "Photos/Roof.jpg");
  EXPECT_EQ(m_Paths.ResolveStored(u""), fs::path());

  EXPECT_EQ(m_Paths.ResolvePicture(typed), outside);
  EXPECT_EQ(m_Paths.ResolvePicture(u"/Photos/roof.JPG"), m_Paths.Root() / "Photos/roof.JPG");
  EXPECT_EQ(m_Paths.ResolvePicture(u"/usr"), m_Paths.Root() / "usr");  // a folder is no picture
  EXPECT_EQ(m_Paths.ResolvePicture(u"photos\\only here.jpg"), m_Paths.Root() / "photos/only here.jpg");
  EXPECT_EQ(m_Paths.ResolvePicture(u"\\..\\outside.jpg"), m_Paths.Root() / "outside.jpg");
}

}  // namespace
}  // namespace inspector::device
