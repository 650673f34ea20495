#include "engine/disk_files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "tests/support/scratch_folder.h"

namespace tessaril {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

class DiskFilesTest : public testing::Test {
 protected:
  Status Read(const std::string& name) { return files.Read(scratch / name, bytes, stamp); }
  Status Replace(const std::string& name, const std::string& content) {
    const std::string_view pieces[] = {std::string_view(content).substr(0, content.size() / 2),
                                       std::string_view(content).substr(content.size() / 2)};
    return files.ReplaceContent(scratch / name, stamp, pieces);
  }
  struct stat Info(const std::string& name) const {
    struct stat info {};
    lstat((scratch / name).c_str(), &info);
    return info;
  }

  ScratchFolder scratch;
  DiskFiles files;
  ByteBuffer bytes;
  FileStamp stamp;
};

TEST_F(DiskFilesTest, ReadsWhatIsThere) {
  const std::string content("a\0\r\n\xFF", 5);
  scratch.Write("p.htm", content);
  ASSERT_TRUE(Read("p.htm").ok());
  EXPECT_EQ(bytes.view(), content);
  scratch.Write("empty.htm", "");
  ASSERT_TRUE(Read("empty.htm").ok());
  EXPECT_EQ(bytes.size(), 0U);
  // Files whose size is not known before: they are read to their end.
  ASSERT_TRUE(files.Read("/proc/self/status", bytes, stamp).ok());
  EXPECT_GT(bytes.size(), 100U);
}

TEST_F(DiskFilesTest, FindsOutThatAnotherFolderIsInThePlaceOfTheCurrentOne) {
  scratch.Write("site/a.htm", "old");
  ASSERT_TRUE(files.EnterFolder(scratch / "site").ok());
  ASSERT_TRUE(Read("site/a.htm").ok());
  fs::rename(scratch / "site", scratch / "kept");
  EXPECT_EQ(files.EnterFolder(scratch / "site").reason(), "No such file or directory");
  EXPECT_EQ(Read("site/a.htm").reason(), "No such file or directory");
  scratch.Write("site/a.htm", "new");
  ASSERT_TRUE(files.EnterFolder(scratch / "site").ok());
  ASSERT_TRUE(Read("site/a.htm").ok());
  EXPECT_EQ(bytes.view(), "new");
  ASSERT_TRUE(Replace("site/a.htm", "newer").ok());
  EXPECT_EQ(scratch.Read("site/a.htm"), "newer");
  EXPECT_EQ(scratch.Read("kept/a.htm"), "old");
}

TEST_F(DiskFilesTest, ReadsRegularFilesOnly) {
  mkfifo((scratch / "pipe.htm").c_str(), 0644);
  fs::create_directory(scratch / "folder.htm");
  fs::create_symlink("loop.htm", scratch / "loop.htm");
  fs::create_symlink("/dev/zero", scratch / "zero.htm");
  EXPECT_EQ(Read("pipe.htm").reason(), "Not a regular file");
  EXPECT_EQ(Read("zero.htm").reason(), "Not a regular file");
  EXPECT_EQ(Read("folder.htm").reason(), "Is a directory");
  EXPECT_EQ(Read("loop.htm").reason(), "Too many levels of symbolic links");
  EXPECT_EQ(Read("none.htm").reason(), "No such file or directory");
}

TEST_F(DiskFilesTest, ListsKinds) {
  scratch.Write("f.htm", "");
  fs::create_directory(scratch / "folder");
  fs::create_symlink("folder", scratch / "to_folder");
  fs::create_symlink("f.htm", scratch / "to_file");
  fs::create_symlink("none", scratch / "to_none");
  mkfifo((scratch / "pipe").c_str(), 0644);
  std::vector<FolderEntry> entries;
  ASSERT_TRUE(files.ListFolder(scratch.path(), entries, stamp).ok());
  EXPECT_FALSE(files.FolderIsUnchanged(scratch.path(), stamp));  // changed just now: nobody can be sure
  Names listed;
  for (const FolderEntry& entry : entries) {
    const char* const kinds[] = {"folder", "file", "other"};
    listed.push_back(entry.name + ": " + kinds[static_cast<int>(entry.kind)]);
  }
  std::sort(listed.begin(), listed.end());
  EXPECT_EQ(listed, (Names{"f.htm: file", "folder: folder", "pipe: other", "to_file: file",
                           "to_folder: other", "to_none: other"}));
  const timespec long_ago[2] = {{1000000000, 0}, {1000000000, 0}};
  utimensat(AT_FDCWD, scratch.path().c_str(), long_ago, 0);
  ASSERT_TRUE(files.ListFolder(scratch.path(), entries, stamp).ok());
  EXPECT_TRUE(files.FolderIsUnchanged(scratch.path(), stamp));
  fs::remove(scratch / "pipe");
  EXPECT_FALSE(files.FolderIsUnchanged(scratch.path(), stamp));
}

TEST_F(DiskFilesTest, ReplacesAndKeepsWhatBelongsToTheFile) {
  scratch.Write("p.htm", "old");
  const std::string path = scratch / "p.htm";
  if (geteuid() == 0) {
    ASSERT_EQ(chown(path.c_str(), 65534, 12), 0);
  }
  ASSERT_EQ(chmod(path.c_str(), 04640), 0);
  const bool attributes = setxattr(path.c_str(), "user.note", "kept", 4, 0) == 0;
  const struct stat before = Info("p.htm");
  ASSERT_TRUE(Read("p.htm").ok());
  ASSERT_TRUE(Replace("p.htm", "new content").ok());
  EXPECT_EQ(scratch.Read("p.htm"), "new content");
  const struct stat after = Info("p.htm");
  EXPECT_NE(after.st_ino, before.st_ino);  // a new file took the old one's place
  EXPECT_EQ(after.st_mode, before.st_mode);
  EXPECT_EQ(after.st_uid, before.st_uid);
  EXPECT_EQ(after.st_gid, before.st_gid);
  if (attributes) {
    char value[8] = {};
    EXPECT_EQ(getxattr(path.c_str(), "user.note", value, sizeof value), 4);
    EXPECT_STREQ(value, "kept");
  }
  EXPECT_EQ(scratch.Names(), Names{"p.htm"});
  ASSERT_TRUE(Replace("p.htm", "").ok());  // the stamp is now that of the new content
  EXPECT_EQ(scratch.Read("p.htm"), "");
}

TEST_F(DiskFilesTest, KeepsLinks) {
  scratch.Write("elsewhere/p.htm", "old");
  fs::create_directory(scratch / "site");
  fs::create_symlink("../elsewhere/p.htm", scratch / "site/link.htm");
  fs::create_symlink(scratch / "site/link.htm", scratch / "link2.htm");
  ASSERT_TRUE(Read("link2.htm").ok());
  ASSERT_TRUE(Replace("link2.htm", "new").ok());
  EXPECT_TRUE(fs::is_symlink(scratch / "link2.htm"));
  EXPECT_TRUE(fs::is_symlink(scratch / "site/link.htm"));
  EXPECT_EQ(scratch.Read("elsewhere/p.htm"), "new");
  fs::create_hard_link(scratch / "elsewhere/p.htm", scratch / "twin.htm");
  for (const char* content : {"a longer content", "short"}) {
    ASSERT_TRUE(Read("twin.htm").ok());
    ASSERT_TRUE(Replace("twin.htm", content).ok());
    EXPECT_EQ(scratch.Read("elsewhere/p.htm"), content);
    EXPECT_EQ(Info("twin.htm").st_nlink, 2U);
  }
  EXPECT_EQ(scratch.Names(), (Names{"elsewhere", "link2.htm", "site", "twin.htm"}));
}

TEST_F(DiskFilesTest, DoesNotOverwriteWhatItHasNotRead) {
  scratch.Write("p.htm", "old");
  ASSERT_TRUE(Read("p.htm").ok());
  scratch.Write("p.htm", "somebody's");
  EXPECT_EQ(Replace("p.htm", "new").reason(), "The file was changed on disk since it was read");
  EXPECT_EQ(scratch.Read("p.htm"), "somebody's");
  ASSERT_TRUE(Read("p.htm").ok());
  scratch.Write("q.htm", "somebody's");  // same size, same moment, another file
  fs::rename(scratch / "q.htm", scratch / "p.htm");
  EXPECT_FALSE(Replace("p.htm", "new").ok());
  ASSERT_TRUE(Read("p.htm").ok());
  fs::remove(scratch / "p.htm");
  EXPECT_EQ(Replace("p.htm", "new").reason(), "No such file or directory");
  EXPECT_TRUE(scratch.Names().empty());
}

TEST_F(DiskFilesTest, ExaminesRegularFilesOnly) {
  scratch.Write("site/p.htm", "1");
  mkfifo((scratch / "site/pipe").c_str(), 0666);
  fs::create_symlink("site", scratch / "link");
  fs::create_symlink("none", scratch / "site/broken");
  const std::string missing = "No such file or directory";
  struct Row {
    std::string name;
    std::string reason;  // of the failure
  };
  const Row rows[] = {
      {"site/p.htm", ""},
      {"link//./p.htm", ""},
      {"site/q.htm", missing},
      {"site/broken", missing},
      {std::string("site/p.htm\0", 11), missing},
      {"site", "Is a directory"},
      {"site/", "Is a directory"},
      {"site/p.htm/", "Not a directory"},
      {"site/p.htm/x", "Not a directory"},
      {"site/pipe", "Not a regular file"},
      {std::string(300, 'x'), "File name too long"},
      {std::string(5000, 'x'), "File name too long"},
      {"none/" + std::string(5000, '/') + "x", "File name too long"},
  };
  for (const bool entered : {false, true}) {
    if (entered && !files.EnterFolder(scratch / "site").ok()) FAIL();
    for (const Row& row : rows) {
      EXPECT_EQ(files.Examine(scratch / row.name, stamp).reason(), row.reason) << row.name;
      EXPECT_EQ(files.ReadPieces(scratch / row.name, stamp, bytes, [](std::string_view, bool) {}).reason(),
                row.reason);
      EXPECT_EQ(Read(row.name).reason(), row.reason) << row.name;
    }
  }
  EXPECT_EQ(files.Examine("", stamp).reason(), missing);
  EXPECT_EQ(files.Examine("/dev/null", stamp).reason(), "Not a regular file");
}

TEST_F(DiskFilesTest, ReadsInPiecesUpToALimit) {
  for (const std::size_t size : {0U, 5U, 1U << 22, (1U << 22) + 5}) {
    scratch.Write("p", std::string(size, 'x'));
    std::size_t total = 0;
    int ends = 0;
    const auto count = [&](std::string_view piece, bool last) {
      total += piece.size();
      ends += last;
    };
    ASSERT_TRUE(files.ReadPieces(scratch / "p", stamp, bytes, count).ok());
    EXPECT_EQ(total, size);
    EXPECT_EQ(ends, 1);
  }
  fs::resize_file(scratch / "p", std::uintmax_t{1} << 31);
  EXPECT_EQ(files.ReadPieces(scratch / "p", stamp, bytes, [](std::string_view, bool) {}).reason(),
            "File too large");
  std::vector<FolderEntry> entries;
  const std::string cut(scratch.path() + std::string("\0/x", 3));
  EXPECT_FALSE(files.ListFolder(cut, entries, stamp).ok());  // and not the folder in front of the NUL
  EXPECT_FALSE(files.Rename(cut, "p", "q").ok());
}

TEST_F(DiskFilesTest, RenamesWithoutOverwriting) {
  for (const char* name : {"A.htm", "B.htm", "b.htm"}) scratch.Write(name, name);
  fs::create_symlink("b.htm", scratch / "C.htm");
  EXPECT_TRUE(files.Rename(scratch.path(), "A.htm", "a.htm").ok());
  EXPECT_EQ(files.Rename(scratch.path(), "B.htm", "b.htm").reason(), "File exists");
  EXPECT_TRUE(files.Rename(scratch.path(), "C.htm", "c.htm").ok());
  EXPECT_EQ(files.Rename(scratch.path(), "D.htm", "d.htm").reason(), "No such file or directory");
  EXPECT_EQ(scratch.Names(), (Names{"B.htm", "a.htm", "b.htm", "c.htm"}));
  EXPECT_EQ(scratch.Read("b.htm"), "b.htm");
  EXPECT_TRUE(fs::is_symlink(scratch / "c.htm"));
}

}  // namespace
}  // namespace tessaril
