// Whose the file is that replaces another one, and who may do what with it.
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include "tests/tool/faults/board_folder.h"
#include "tests/tool/faults/rux_process.h"

namespace {

constexpr uid_t kUser = 65534;
constexpr gid_t kOwnGroup = 65534;
constexpr gid_t kOtherGroup = 12345;

struct Rights {
  uid_t owner;
  gid_t group;
  mode_t mode;
};

bool operator==(const Rights& one, const Rights& other) {
  return one.owner == other.owner && one.group == other.group && one.mode == other.mode;
}

void PrintTo(const Rights& rights, std::ostream* stream) {
  *stream << rights.owner << ':' << rights.group << " 0" << std::oct << rights.mode << std::dec;
}

// An access control list as the system takes it: version 2, then tag, permissions and ID of each
// entry. Here: the owner rw, user 1000 r, the group `group`, at most `most`, others none.
std::string ListOf(char group, char most) {
  const auto entry = [](char tag, char permissions, const std::string& id) {
    return std::string{tag, 0, permissions, 0} + id;
  };
  const std::string none(4, '\xFF');
  const std::string user("\xE8\x03\0\0", 4);
  return std::string("\x02\0\0\0", 4) + entry(0x01, 6, none) + entry(0x02, 4, user) +
         entry(0x04, group, none) + entry(0x10, most, none) + entry(0x20, 0, none);
}

constexpr char kAccess[] = "system.posix_acl_access";
constexpr char kDefault[] = "system.posix_acl_default";

class RightsTest : public testing::Test {
 protected:
  void SetUp() override { Fill(folder_, Scripts()); }

  void ReplacedHas(const Rights& rights) const {
    const std::string path = folder_.Write("board.meta", "older");
    ASSERT_EQ(chown(path.c_str(), rights.owner, rights.group), 0);
    ASSERT_EQ(chmod(path.c_str(), rights.mode), 0);
  }

  bool SetList(const std::string& name, const char* kind, const std::string& list) const {
    return setxattr((folder_ / name).c_str(), kind, list.data(), list.size(), 0) == 0;
  }

  std::string List() const {
    char list[256];
    const ssize_t size = getxattr((folder_ / "board.meta").c_str(), kAccess, list, sizeof list);
    return size > 0 ? std::string(list, static_cast<std::size_t>(size)) : "";
  }

  // Compiles as another user, if there is one.
  Rights Compiled(uid_t user = geteuid(), const std::vector<gid_t>& groups = {}) const {
    const auto become = [&] {
      if (user == geteuid()) return;
      if (setgroups(groups.size(), groups.data()) != 0 || setgid(kOwnGroup) != 0 ||
          setuid(user) != 0) {
        _exit(126);
      }
    };
    const Ended ended = RuxProcess(folder_.path(), {"compile", "board.rux"}, become).Wait();
    EXPECT_EQ(ended.exit_status, 0) << ended.errors;
    EXPECT_EQ(folder_.Read("board.meta").substr(0, 13), "MORV RUX meta");
    struct stat status = {};
    EXPECT_EQ(stat((folder_ / "board.meta").c_str(), &status), 0);
    return {status.st_uid, status.st_gid, status.st_mode & 07777};
  }

  const TempFolder folder_;
};

TEST_F(RightsTest, SpecialBitsAreNoPartOfThem) {
  ReplacedHas({geteuid(), getegid(), 06751});
  EXPECT_EQ(Compiled(), (Rights{geteuid(), getegid(), 0751}));
}

// What only root can set up.
class OwnersTest : public RightsTest {
 protected:
  void SetUp() override {
    if (geteuid() != 0) GTEST_SKIP() << "only root can give files away";
    RightsTest::SetUp();
    ASSERT_EQ(chmod(folder_.path().c_str(), 0777), 0);
  }
};

TEST_F(OwnersTest, RootKeepsOwnerAndGroup) {
  for (const Rights& rights :
       {Rights{kUser, kOtherGroup, 0640}, Rights{0, kOtherGroup, 0600}, Rights{kUser, 0, 0604}}) {
    ReplacedHas(rights);
    EXPECT_EQ(Compiled(), rights);
  }
}

TEST_F(OwnersTest, MembersKeepTheGroup) {
  ReplacedHas({kUser, kOtherGroup, 0664});
  EXPECT_EQ(Compiled(kUser, {kOtherGroup}), (Rights{kUser, kOtherGroup, 0664}));
}

TEST_F(OwnersTest, AnotherGroupGetsNoMoreThanEverybody) {
  ReplacedHas({kUser, kOtherGroup, 0664});
  EXPECT_EQ(Compiled(kUser), (Rights{kUser, kOwnGroup, 0644}));
  ReplacedHas({kUser, kOtherGroup, 0640});
  EXPECT_EQ(Compiled(kUser), (Rights{kUser, kOwnGroup, 0600}));
}

TEST_F(OwnersTest, AnotherOwnerMayReplaceTheFile) {
  ReplacedHas({1, kOtherGroup, 0666});
  EXPECT_EQ(Compiled(kUser, {kOtherGroup}), (Rights{kUser, kOtherGroup, 0666}));
}

TEST_F(RightsTest, TheAccessControlListIsKept) {
  ReplacedHas({geteuid(), getegid(), 0600});
  const std::string list = ListOf(0, 4);
  if (!SetList("board.meta", kAccess, list)) GTEST_SKIP() << "the file system has no lists";
  EXPECT_EQ(Compiled(), (Rights{geteuid(), getegid(), 0640}));
  EXPECT_EQ(List(), list);
}

TEST_F(RightsTest, TheListOfTheFolderDoesNotComeInstead) {
  ReplacedHas({geteuid(), getegid(), 0640});
  if (!SetList("", kDefault, ListOf(6, 6))) GTEST_SKIP() << "the file system has no lists";
  EXPECT_EQ(Compiled(), (Rights{geteuid(), getegid(), 0640}));
  EXPECT_EQ(List(), "");
}

TEST_F(OwnersTest, AListGoesWithItsGroup) {
  ReplacedHas({kUser, kOtherGroup, 0600});
  if (!SetList("board.meta", kAccess, ListOf(4, 6))) GTEST_SKIP() << "the file system has no lists";
  EXPECT_EQ(Compiled(kUser), (Rights{kUser, kOwnGroup, 0600}));
  EXPECT_EQ(List(), "");
}

}  // namespace
