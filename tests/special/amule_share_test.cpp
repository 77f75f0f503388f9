// The share of the aMule package's folder.
#include "download_shares.h"
#include "files.h"
#include "nasshare/platform.h"
#include "nasshare/smbconf.h"

#include <csignal>
#include <cstring>
#include <deque>
#include <dlfcn.h>
#include <filesystem>
#include <sys/wait.h>

namespace nasshare::tests {
namespace {

enum class Packages { own, reference, none };
Packages packages = Packages::own;

std::deque<modx_package> installed;
modx_package_list own_list = {};

// The calls so far, a line each.
std::string calls;

template <class Symbol> Symbol *of_reference_platform(const char *name) {
  return static_cast<Symbol *>(dlsym(RTLD_NEXT, name));
}

void call_reference_platform(const char *name) {
  reinterpret_cast<void (*)()>(dlsym(RTLD_NEXT, name))();
}

modx_package_list *current_list() {
  switch (packages) {
  case Packages::own:
    return &own_list;
  case Packages::reference:
    return *of_reference_platform<modx_package_list *>("p_lib_list");
  default:
    return nullptr;
  }
}

void install(const char *name, const std::string &path) {
  modx_package &package = installed.emplace_back();
  std::strcpy(package.name, name);
  std::strcpy(package.path, path.c_str());
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
    call_reference_platform("MODX_ReadAllXml");
  }
}

void free_packages() {
  calls += "MODX_FreeAllXml\n";
  own_list = {};
  if (packages == Packages::reference) {
    call_reference_platform("MODX_FreeAllXml");
  }
}

constexpr const char *calls_of_a_walk = "MODX_COMMAND 1 0\nMODX_ReadAllXml\nMODX_FreeAllXml\n";

// A process whose command name is the file's.
class Process {
public:
  explicit Process(const std::string &file) {
    if (!exists(file)) {
      std::filesystem::copy_file("/bin/sleep", file);
    }
    id_ = files::start(file, {"sleep", "60"});
  }
  ~Process() {
    kill(id_, SIGKILL);
    waitpid(id_, nullptr, 0);
  }
  Process(const Process &) = delete;
  Process &operator=(const Process &) = delete;

private:
  pid_t id_ = -1;
};

// Two volumes, and the add-on service runs.
class AmuleShare : public testing::Test {
protected:
  AmuleShare() { two_volumes(); }

private:
  Process service_{"/tmp/modx"};
};

TEST_F(AmuleShare, IsOpenToEveryone) {
  install("aMule", "/mnt/HD/HD_b2/Nas_Prog/aMule");
  create_amule_share();
  EXPECT_EQ(listing(), "\n"
                       "volume_raid     : [4]\n"
                       "hd_serial       : [UUID=two]\n"
                       "name            : [aMule]\n"
                       "comment         : [aMule Folder Share]\n"
                       "path            : [/mnt/HD/HD_b2/aMule]\n"
                       "browseable      : [yes]\n"
                       "public          : [yes]\n"
                       "oplocks         : [yes]\n"
                       "map_archive     : [no]\n"
                       "read_list       : []\n"
                       "write_list      : [#nobody#,#@allaccount#]\n"
                       "invalid_users   : []\n"
                       "valid_users     : [#nobody#,#@allaccount#]\n"
                       "recycle_enable  : [0]\n"
                       "recycle_tree    : [0]\n\n");
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
  EXPECT_EQ(listed_names(), Names{"aMule"});
  EXPECT_EQ(place("aMule"), "4 UUID=two /mnt/HD/HD_b2/aMule") << "the first of two is used";
}

TEST_F(AmuleShare, IsNotThereWithoutThePackage) {
  for (const char *name : {"", "amule", "AMULE", "aMule ", " aMule", "aMul", "aMule2"}) {
    install(name, "/mnt/HD/HD_a2");
  }
  create_amule_share();
  EXPECT_EQ(listed_names(), Names{});
  EXPECT_EQ(pss->list_changed, 0);
  EXPECT_EQ(calls, calls_of_a_walk);
}

TEST_F(AmuleShare, IsNotThereWithoutAnyPackage) {
  create_amule_share();
  EXPECT_EQ(listed_names(), Names{});
  EXPECT_EQ(pss->list_changed, 0);
  EXPECT_EQ(calls, calls_of_a_walk);
}

TEST_F(AmuleShare, IsNotThereWithoutAPackageList) {
  packages = Packages::none;
  install("aMule", "/mnt/HD/HD_a2");
  create_amule_share();
  EXPECT_EQ(listed_names(), Names{});
  EXPECT_EQ(pss->list_changed, 0);
  EXPECT_EQ(calls, calls_of_a_walk);
}

// ---- The add-on service

TEST(AmuleService, NothingIsAskedUnlessItRuns) {
  two_volumes();
  install("aMule", "/mnt/HD/HD_a2");
  const Process others[] = {Process("/tmp/modx2"), Process("/tmp/Modx"), Process("/tmp/amodx")};
  create_amule_share();
  EXPECT_EQ(listed_names(), Names{});
  EXPECT_EQ(pss->list_changed, 0);
  EXPECT_EQ(calls, "");
}

TEST_F(AmuleShare, NothingIsAskedWhileTheServiceRunsTwice) {
  install("aMule", "/mnt/HD/HD_a2");
  {
    const Process second("/tmp/modx");
    create_amule_share();
    EXPECT_EQ(listed_names(), Names{});
    EXPECT_EQ(pss->list_changed, 0);
    EXPECT_EQ(calls, "");
  }
  create_amule_share();
  EXPECT_EQ(listed_names(), Names{"aMule"});
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
  for (const int flag : {0, 1, 2}) {
    SCOPED_TRACE(flag);
    Free_All_List();
    smb_dbg_flag = flag;
    EXPECT_EQ(output_of(create_amule_share), flag == 1 ? "get_nfs_path---->[/mnt/HD/HD_a2/aMule]\n"
                                                         "compare path---->[/mnt/HD/HD_a2/aMule]\n"
                                                       : "");
  }
}

// ---- The list

TEST_F(AmuleShare, AShareOfTheNameThatIsListedWins) {
  Insert_Smb_Node(Share{"aMule"}.path("/mnt/HD/HD_b2/mine").write("#alice#"));
  install("aMule", "/mnt/HD/HD_a2");
  create_amule_share();
  EXPECT_EQ(listed_names(), Names{"aMule"});
  EXPECT_STREQ(pss->head->path, "/mnt/HD/HD_b2/mine");
  EXPECT_STREQ(pss->head->write_list, "#alice#");
  EXPECT_EQ(pss->list_changed, 1);
  EXPECT_EQ(calls, calls_of_a_walk);
}

TEST_F(AmuleShare, ComesBehindTheListedShares) {
  Insert_Smb_Node(Share{"P2P"}.path("/mnt/HD/HD_a2/P2P"));
  install("aMule", "/mnt/HD/HD_a2");
  create_amule_share();
  EXPECT_EQ(listed_names(), (Names{"P2P", "aMule"}));
}

TEST_F(AmuleShare, IsPublishedButNotStored) {
  Appliance::single_disks();
  install("aMule", "/mnt/HD/HD_b2");
  get_samba_info();
  create_amule_share();
  EXPECT_EQ(place("aMule"), "1 WD-TESTDISK0002 /mnt/HD/HD_b2/aMule");
  ASSERT_EQ(create_smb_conf(), 0);
  EXPECT_NE(read_file("/etc/samba/smb.conf").find("\n[ aMule ]\n"), std::string::npos);
  EXPECT_FALSE(exists("/mnt/HD_b4/.systemfile/.smb.xml"));
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
  EXPECT_EQ(listed_names(), Names{});
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
