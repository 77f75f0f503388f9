// Each allocation of the libraries fails in turn, alone or with all that follow, in the process that changes
// stored files or reads them.
#include "appliance.h"
#include "dfs_files.h"
#include "domain.h"
#include "each_allocation.h"
#include "failing_memory.h"
#include "files.h"
#include "findings.h"
#include "iso_catalogue.h"
#include "nasshare/nasshare.h"
#include "share.h"
#include "verdict.h"

#include <cstdio>
#include <cstring>
#include <functional>
#include <grp.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace nasshare::tests {
namespace {

constexpr const char *allocations = "allocations failed";

// The C library's first look-up of an account follows a null pointer when memory is short.
void look_up_an_account() {
  getpwnam("nobody");
  getgrnam("nogroup");
}

// The change keeps the old files or stores the new ones, and tells which.
void expect_change_to_endure(const Change &change, const Files &before = make_appliance()) {
  if (!watch_allocations()) {
    GTEST_SKIP() << "references to functions of libraries cannot be turned on this processor";
  }
  look_up_an_account();
  Verdict verdict(change, before);
  const auto begin = [&] {
    verdict.begin();
    change.prepare();
  };
  const Endured endured = fail_each_allocation(
      begin, change.run, [&](const Interrupted &end) { return verdict.after_failure(end); });
  expect_nothing_found(change.name, endured, allocations, 2);
}

std::string ending_of(const Interrupted &end) {
  constexpr int without_volume = 255; // the load saw no disk or no volume
  return end.answered || end.status == without_volume
             ? ""
             : "ended with status " + std::to_string(end.status) + "\n" + end.messages.substr(0, 2000);
}

// What is wrong after something that changes no stored file.
std::string wrong_after_use(const Interrupted &end, const Files &before) {
  return ending_of(end) + (stored_files() == before ? "" : "the stored files have changed\n");
}

struct Use {
  std::string name;
  std::function<void()> use;
  std::function<void()> prepare = [] {}; // what is not short of memory
};

void expect_to_endure(const Use &use, const Files &before = make_appliance()) {
  if (!watch_allocations()) {
    GTEST_SKIP() << "references to functions of libraries cannot be turned on this processor";
  }
  look_up_an_account();
  const auto run = [&use] {
    use.use();
    return 1;
  };
  const Endured endured = fail_each_allocation(
      use.prepare, run, [&before](const Interrupted &end) { return wrong_after_use(end, before); });
  expect_nothing_found(use.name, endured, allocations, 2);
}

// A question about what is stored, its true answer, and what else it may answer while memory is short.
struct Question {
  std::string name;
  Function ask;
  int truth;
  std::set<int> when_short;

  [[nodiscard]] bool can_be_answered(int answer) const {
    return answer == truth || when_short.contains(answer);
  }
};

void expect_answers(const Question &question, const Files &before) {
  EXPECT_EQ(run_alone(question.ask).answer, question.truth) << question.name;
  const Endured endured = fail_each_allocation(
      [] {}, question.ask,
      [&](const Interrupted &end) {
        const bool right = !end.answered || question.can_be_answered(end.answer);
        return wrong_after_use(end, before) + (right ? "" : "answered " + std::to_string(end.answer) + "\n");
      });
  expect_nothing_found(question.name, endured, allocations, 2);
}

// ---- Changes

TEST(FailedAllocation, AddingAShareKeepsTheOldFilesOrStoresTheNew) {
  expect_change_to_endure(adding_a_share());
}

TEST(FailedAllocation, ModifyingAShareKeepsTheOldFilesOrStoresTheNew) {
  expect_change_to_endure(modifying_a_share());
}

TEST(FailedAllocation, DeletingAShareKeepsTheOldFilesOrStoresTheNew) {
  expect_change_to_endure(deleting_a_share());
}

TEST(FailedAllocation, ChangingAnAccountKeepsTheOldFilesOrStoresTheNew) {
  expect_change_to_endure(changing_an_account());
}

// A permission that memory was too short to record is not left out of a change that is done.
TEST(FailedAllocation, CollectingPermissionsKeepsTheOldFilesOrStoresTheNew) {
  Change change = changing_an_account();
  change.run = [collect = change.prepare, run = change.run] {
    collect();
    return run();
  };
  change.prepare = [] {};
  expect_change_to_endure(change);
}

TEST(FailedAllocation, AddingAShareInDomainModeKeepsTheOldFilesOrStoresTheNew) {
  expect_change_to_endure(adding_a_share_in_domain_mode(), make_domain_appliance());
}

TEST(FailedAllocation, AddingALinkKeepsTheOldFilesOrStoresTheNew) {
  expect_change_to_endure(adding_a_link());
}

TEST(FailedAllocation, RenamingAGroupKeepsTheOldFilesOrStoresTheNew) {
  expect_change_to_endure(renaming_a_group());
}

TEST(FailedAllocation, StoringAValueKeepsTheOldFileOrStoresTheNew) {
  expect_change_to_endure(storing_a_value());
}

// ---- Lists that a host program fills and has written

void expect_old_or_new(const std::string &name, const std::string &path, const std::function<void()> &write) {
  if (!watch_allocations()) {
    GTEST_SKIP() << "references to functions of libraries cannot be turned on this processor";
  }
  const Files before = make_appliance();
  const std::string old = before.at(path);
  const auto run = [&write] {
    write();
    return 1;
  };
  run_alone(run);
  const std::string fresh = read_file(path);
  ASSERT_NE(fresh, old);
  const Endured endured = fail_each_allocation(
      [&] { restore(before); }, run,
      [&](const Interrupted &end) {
        const std::string text = read_file(path);
        return ending_of(end) + (text == old || text == fresh ? "" : "the file reads\n" + text);
      });
  expect_nothing_found(name, endured, allocations, 2);
}

TEST(FailedAllocation, WritingTheGroupListKeepsTheOldFileOrStoresTheNew) {
  expect_old_or_new("write_DFS_group_xml", group_path, [] {
    get_dfs_group_info();
    Insert_Name_Node("Archive");
    Insert_Name_Node("More");
    write_DFS_group_xml();
  });
}

TEST(FailedAllocation, WritingTheLinkListKeepsTheOldFileOrStoresTheNew) {
  expect_old_or_new("write_DFS_xml", link_path, [] {
    get_dfs_info();
    for (const char *local : {"one", "two"}) {
      smb_dfs_node link = {};
      std::strcpy(link.host, "nas3");
      std::strcpy(link.share, "films");
      std::strcpy(link.local, local);
      std::strcpy(link.group, "Media");
      dfs_add_node(&link);
    }
    write_DFS_xml();
  });
}

// ---- Everything else that allocates

TEST(FailedAllocation, AutomaticSharesAreMadeOrNot) {
  make_appliance();
  const Appliance machine;
  mounted_images({{.name = "film", .hd_serial = "WD-TESTDISK0001"}});
  Appliance{}.file("/etc/NAS_CFG/p2psettings.xml",
                   "<config><settings><save_path>/mnt/HD/HD_a2/x</save_path></settings></config>");
  const Files before = stored_files();
  expect_to_endure({"automatic shares",
                    [] {
                      create_iso_share();
                      create_p2p_share();
                      create_recycle_user_directory("/mnt/HD/HD_a2/recycle");
                      Free_All_List();
                    },
                    get_samba_info2},
                   before);
}

// Any other text shows shares without some of their lists.
TEST(FailedAllocation, PublishingKeepsTheOldTextOrWritesTheWholeNewOne) {
  if (!watch_allocations()) {
    GTEST_SKIP() << "references to functions of libraries cannot be turned on this processor";
  }
  look_up_an_account();
  make_appliance();
  const std::string smb_conf = "/etc/samba/smb.conf";
  const auto begin = [&] { files::write(smb_conf, "old"); };
  const auto run = [] {
    get_samba_info2();
    const int written = create_smb_conf() == 0 ? 1 : 0;
    Free_All_List();
    return written;
  };
  begin();
  run_alone(run);
  const std::string whole = read_file(smb_conf);
  ASSERT_NE(whole, "old");
  const Endured endured = fail_each_allocation(begin, run, [&](const Interrupted &end) {
    const std::string text = read_file(smb_conf);
    const bool right = text == whole || (text == "old" && end.answer != 1);
    return ending_of(end) +
           (right ? "" : "answer " + std::to_string(end.answer) + ", smb.conf reads\n" + text);
  });
  expect_nothing_found("smb.conf, its text", endured, allocations, 2);
}

TEST(FailedAllocation, AddOnPackagesAreReadOrNot) {
  make_appliance();
  Appliance{}.file("/etc/NAS_CFG/packages.xml",
                   "<packages><package><name>aMule</name><path>/mnt/HD/HD_a2/p</path></package></packages>");
  expect_to_endure({"packages",
                    [] {
                      MODX_ReadAllXml();
                      MODX_FreeAllXml();
                    }},
                   stored_files());
}

// None of these questions has an answer for "cannot tell". What memory is too short to load counts as absent:
// a taken name as free, and the path of a share as none. What is not there is never found.
TEST(FailedAllocation, QuestionsAreAnswered) {
  if (!watch_allocations()) {
    GTEST_SKIP() << "references to functions of libraries cannot be turned on this processor";
  }
  look_up_an_account();
  const Files before = make_appliance();
  const std::vector<Question> questions{
      {"a taken name", [] { return chk_share("Music"); }, 0, {1}},
      {"a free name", [] { return chk_share("Films"); }, 1, {}},
      {"a name with its path", [] { return chk_name_path("Music", "/mnt/HD/HD_a2/Music"); }, 2, {0, 1}},
      {"a name with another path", [] { return chk_name_path("Music", "/mnt/HD/HD_a2/Films"); }, 0, {1}},
      {"a link", [] { return static_cast<int>(chk_dfs_node_exist("Media", "songs")); }, 1, {0}},
      {"no link", [] { return static_cast<int>(chk_dfs_node_exist("Media", "films")); }, 0, {}},
      {"a group", [] { return static_cast<int>(chk_dfs_group_exist("Media")); }, 1, {0}},
      {"no group", [] { return static_cast<int>(chk_dfs_group_exist("Films")); }, 0, {}},
      {"a tree that is switched off",
       [] {
         create_dfs_link();
         return exists("/etc/dfsroot") ? 1 : 0;
       },
       0,
       {}},
  };
  for (const Question &question : questions) {
    expect_answers(question, before);
  }
}

TEST(FailedAllocation, ListsStayWhole) {
  expect_to_endure({"lists", [] {
                      const Share share{"Music"};
                      Insert_Smb_Node(share);
                      Insert_Smb_Node(Share{"Photos"});
                      Remove_Smb_Node_By_Name("Music");
                      Free_All_List();

                      Insert_Name_Node("one");
                      Insert_Name_Node("two");
                      Delete_Name_Node(Check_Name_Node("one"));
                      Free_Name_List();

                      insert_acnt_node("Music", 1);
                      smb_ac_node control = {};
                      control.read[0] = 'a';
                      ac_put_acnt(&control);
                      free_acnt_list();

                      smb_ac_list controls = {};
                      pacl = &controls;
                      ac_add_node(&control);
                      ac_remove_all();
                      pacl = nullptr;

                      const smb_dfs_node link = {};
                      dfs_add_node(&link);
                      dfs_add_node(nullptr);
                      dfs_remove_all();
                      free(dfs_get_node());
                      free(get_acnt_node());
                      free(ac_get_node());
                    }});
}

TEST(FailedAllocation, ADomainIsJoinedAndLeftOrNot) {
  make_domain_appliance();
  for (const char *command : {"net", "kinit", "winbindd", "wbinfo", "killall", "smb", "pkill"}) {
    Appliance{}.script(command, ":");
  }
  in_a_domain();
  const Files before = stored_files();
  const std::vector<Use> uses{
      {"krb5.conf", ads_create_krb5_conf},
      {"nsswitch.conf and pam.d/samba",
       [] {
         ads_create_nsswitch_conf();
         ads_create_pam_samba(1);
       }},
      {"kinit", [] { ads_kinit(); }},
      {"net ads join", [] { ads_join_domain(); }},
      {"a user of the domain", [] { ads_check_user("dora"); }},
      {"a group of the domain", [] { ads_check_group("Sales Team"); }},
      {"the accounts of the shares",
       [] {
         ads_check_user_group();
         Free_All_List();
       },
       check_hd},
  };
  for (const Use &use : uses) {
    expect_to_endure(use, before);
  }
}

TEST(FailedAllocation, AHostIsBrowsedOrNot) {
  make_appliance();
  Appliance{}.script("smbclient", "printf 'Disk|music|songs\\nDisk|films|\\n'");
  expect_to_endure({"browsing", [] { get_host_share_name("nas1"); }}, stored_files());
}

// ---- The failures find what they are for

// A program that takes a file that it had no memory to read for an empty one.
TEST(FailedAllocation, ALossIsFound) {
  if (!watch_allocations()) {
    GTEST_SKIP() << "references to functions of libraries cannot be turned on this processor";
  }
  const Files before = make_appliance();
  Change change = storing_a_value();
  change.run = [path = change.after.begin()->first, fresh = change.after.begin()->second] {
    FILE *file = fopen(path.c_str(), "re"); // allocates its stream
    const bool read = file != nullptr;
    if (read) {
      fclose(file);
    }
    files::write(path, read ? fresh : "");
    return 1;
  };
  Verdict verdict(change, before);
  const Endured endured =
      fail_each_allocation([&] { verdict.begin(); }, change.run,
                           [&](const Interrupted &end) { return verdict.after_failure(end); });
  EXPECT_NE(endured.findings.text().find("config.xml is neither the old nor the new file"), std::string::npos)
      << endured.findings.text();
}

} // namespace
} // namespace nasshare::tests
