// The share of the aMule package's folder.
#include "appliance.h"
#include "debug_output.h"
#include "download_shares.h"
#include "fields.h"
#include "listed.h"
#include "nasshare/catalogue.h"
#include "nasshare/platform.h"
#include "nasshare/smbconf.h"
#include "nasshare/special.h"
#include "next_definition.h"
#include "paths.h"
#include "running_program.h"
#include "share.h"

#include <deque>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

enum class Packages { own, reference, none };
Packages packages = Packages::own;

std::deque<modx_package> installed;
modx_package_list own_list = {};

// The calls so far, a line each.
std::string calls;

modx_package_list *current_list() {
  switch (packages) {
  case Packages::own:
    return &own_list;
  case Packages::reference:
    return *static_cast<modx_package_list **>(::dlsym(RTLD_NEXT, "p_lib_list"));
  default:
    return nullptr;
  }
}

void install(const char *name, const std::string &path) {
  modx_package &package = installed.emplace_back();
  put(package.name, name);
  put(package.path, path);
}

void read_packages() {
  calls += "MODX_ReadAllXml\n";
  own_list = {};
  for (auto package = installed.rbegin(); package != installed.rend(); ++package) {
    package->next = own_list.first;
    own_list.first = &*package;
    ++own_list.count;
  }
  if (packages == Packages::reference) {
    next_definition<void()>("MODX_ReadAllXml")();
  }
}

void free_packages() {
  calls += "MODX_FreeAllXml\n";
  own_list = {};
  if (packages == Packages::reference) {
    next_definition<void()>("MODX_FreeAllXml")();
  }
}

constexpr const char *calls_of_a_walk = "MODX_COMMAND 1 0\nMODX_ReadAllXml\nMODX_FreeAllXml\n";

// Two volumes, and the add-on service runs.
class AmuleShare : public testing::Test {
protected:
  AmuleShare() { two_volumes(); }

private:
  RunningProgram service_ = waiting_program("/tmp/modx");
};

TEST_F(AmuleShare, IsOpenToEveryone) {
  install("aMule", "/mnt/HD/HD_b2/Nas_Prog/aMule");
  create_amule_share();
  expect_listing(List_Smb_Node, download_listing("aMule", 4, "UUID=two", "/mnt/HD/HD_b2/aMule"));
  EXPECT_EQ(pss->list_changed, 1);
  EXPECT_EQ(calls, calls_of_a_walk);
}

TEST_F(AmuleShare, LiesOnTheVolumeThatHoldsThePackage) {
  const std::string on_first = "1 WD-1 /mnt/HD/HD_a2/aMule";
  const std::string on_second = "4 UUID=two /mnt/HD/HD_b2/aMule";
  const struct {
    std::string path, place;
  } rows[] = {
      {"/mnt/HD/HD_a2/Nas_Prog/aMule", on_first},
      {"/mnt/HD/HD_b2/Nas_Prog/aMule", on_second},
      {"lies in /mnt/HD/HD_b2", on_second},
      {"/mnt/HD/HD_b2/mnt/HD/HD_a2", on_first},
      {"/mnt/HD/HD_c2/Nas_Prog/aMule", on_first},
      {"", on_first},
      {"/mnt/HD/HD_b2/" + std::string(4081, 'x'), on_second},
      {std::string(4082, 'x') + "/mnt/HD/HD_b2", on_second},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.path.substr(0, 100));
    Free_All_List();
    installed.clear();
    install("aMule", row.path);
    create_amule_share();
    EXPECT_EQ(place("aMule"), row.place);
  }
}

TEST_F(AmuleShare, IsFoundAmongOtherPackages) {
  install("amule", "/mnt/HD/HD_a2");
  install("aMule2", "/mnt/HD/HD_a2");
  install("", "/mnt/HD/HD_a2");
  install("aMule", "/mnt/HD/HD_b2");
  install("aMule", "/mnt/HD/HD_a2");
  create_amule_share();
  EXPECT_EQ(listed_shares(), Names{"aMule"});
  EXPECT_EQ(place("aMule"), "4 UUID=two /mnt/HD/HD_b2/aMule") << "the first of two is used";
}

TEST_F(AmuleShare, IsNotThereWithoutThePackage) {
  for (const char *name : {"", "amule", "AMULE", "aMule ", " aMule", "aMul", "aMule2"}) {
    install(name, "/mnt/HD/HD_a2");
  }
  create_amule_share();
  EXPECT_EQ(listed_shares(), Names{});
  EXPECT_EQ(pss->list_changed, 0);
  EXPECT_EQ(calls, calls_of_a_walk);
}

TEST_F(AmuleShare, IsNotThereWithoutAnyPackage) {
  create_amule_share();
  EXPECT_EQ(listed_shares(), Names{});
  EXPECT_EQ(pss->list_changed, 0);
  EXPECT_EQ(calls, calls_of_a_walk);
}

TEST_F(AmuleShare, IsNotThereWithoutAPackageList) {
  packages = Packages::none;
  install("aMule", "/mnt/HD/HD_a2");
  create_amule_share();
  EXPECT_EQ(listed_shares(), Names{});
  EXPECT_EQ(pss->list_changed, 0);
  EXPECT_EQ(calls, calls_of_a_walk);
}

// ---- The add-on service

TEST(AmuleService, NothingIsAskedUnlessItRuns) {
  two_volumes();
  install("aMule", "/mnt/HD/HD_a2");
  const RunningProgram others[] = {waiting_program("/tmp/modx2"), waiting_program("/tmp/Modx"),
                                   waiting_program("/tmp/amodx")};
  create_amule_share();
  EXPECT_EQ(listed_shares(), Names{});
  EXPECT_EQ(pss->list_changed, 0);
  EXPECT_EQ(calls, "");
}

TEST_F(AmuleShare, NothingIsAskedWhileTheServiceRunsTwice) {
  install("aMule", "/mnt/HD/HD_a2");
  {
    const RunningProgram second = waiting_program("/tmp/modx");
    create_amule_share();
    EXPECT_EQ(listed_shares(), Names{});
    EXPECT_EQ(pss->list_changed, 0);
    EXPECT_EQ(calls, "");
  }
  create_amule_share();
  EXPECT_EQ(listed_shares(), Names{"aMule"});
}

// ---- Oplocks

TEST_F(AmuleShare, HasNoOplocksWhereAnotherProtocolReachesIt) {
  install("aMule", "/mnt/HD/HD_b2/Nas_Prog/aMule");
  for (const OplockRow &row : oplock_rows("/mnt/HD/HD_b2/aMule")) {
    SCOPED_TRACE(std::string(row.afp) + " " + row.nfs + " " + row.exports);
    Free_All_List();
    set_file_services(row);
    create_amule_share();
    EXPECT_EQ(oplocks("aMule"), row.oplocks);
  }
}

TEST_F(AmuleShare, TheExportsAreComparedOutLoudOnlyWhenTheFlagIsOne) {
  install("aMule", "/mnt/HD/HD_a2");
  set_file_services({"0", "1", "\"/mnt/HD/HD_a2/aMule\" *\n", ""});
  const auto create = [] {
    Free_All_List();
    create_amule_share();
  };
  expect_trace(create, "get_nfs_path---->[/mnt/HD/HD_a2/aMule]\n"
                       "compare path---->[/mnt/HD/HD_a2/aMule]\n");
}

// ---- The list

TEST_F(AmuleShare, AShareOfTheNameThatIsListedWins) {
  Insert_Smb_Node(Share{"aMule"}.path("/mnt/HD/HD_b2/mine").write("#alice#"));
  install("aMule", "/mnt/HD/HD_a2");
  create_amule_share();
  EXPECT_EQ(listed_shares(), Names{"aMule"});
  EXPECT_STREQ(pss->head->path, "/mnt/HD/HD_b2/mine");
  EXPECT_STREQ(pss->head->write_list, "#alice#");
  EXPECT_EQ(pss->list_changed, 1);
  EXPECT_EQ(calls, calls_of_a_walk);
}

TEST_F(AmuleShare, ComesBehindTheListedShares) {
  Insert_Smb_Node(Share{"P2P"}.path("/mnt/HD/HD_a2/P2P"));
  install("aMule", "/mnt/HD/HD_a2");
  create_amule_share();
  EXPECT_EQ(listed_shares(), (Names{"P2P", "aMule"}));
}

TEST_F(AmuleShare, IsPublishedButNotStored) {
  Appliance::single_disks();
  install("aMule", "/mnt/HD/HD_b2");
  get_samba_info();
  create_amule_share();
  EXPECT_EQ(place("aMule"), "1 WD-TESTDISK0002 /mnt/HD/HD_b2/aMule");
  ASSERT_EQ(create_smb_conf(), 0);
  EXPECT_NE(read_file(smb_conf).find("\n[ aMule ]\n"), std::string::npos);
  EXPECT_FALSE(exists(second_share_file));
  EXPECT_EQ(transcript().find("smbcom"), std::string::npos);
}

// ---- The reference platform's packages

TEST_F(AmuleShare, IsFoundInTheReferencePlatformsFile) {
  packages = Packages::reference;
  Appliance{}.file("/etc/NAS_CFG/packages.xml",
                   "<packages>\n"
                   "  <package><name>Web</name><path>/mnt/HD/HD_a2/Nas_Prog/Web</path></package>\n"
                   "  <package><name>aMule</name><path>/mnt/HD/HD_b2/Nas_Prog/aMule</path></package>\n"
                   "</packages>\n");
  create_amule_share();
  EXPECT_EQ(place("aMule"), "4 UUID=two /mnt/HD/HD_b2/aMule");
  EXPECT_EQ(p_lib_list->first, nullptr) << "released";
}

TEST_F(AmuleShare, IsNotThereWithoutTheReferencePlatformsFile) {
  packages = Packages::reference;
  create_amule_share();
  EXPECT_EQ(listed_shares(), Names{});
  EXPECT_EQ(pss->list_changed, 0);
}

} // namespace
} // namespace nasshare::tests

// This program's own package library, which wins over the reference platform's.
modx_package_list *p_lib_list = nullptr;

void MODX_COMMAND(int a, int b) {
  nasshare::tests::calls += "MODX_COMMAND " + std::to_string(a) + " " + std::to_string(b) + "\n";
}

void MODX_ReadAllXml() {
  nasshare::tests::read_packages();
  p_lib_list = nasshare::tests::current_list();
}

void MODX_FreeAllXml() {
  nasshare::tests::free_packages();
}
