// add_share, mod_share and del_share: answers, files, order of what can be seen from outside.
#include "access_lists.h"
#include "appliance.h"
#include "music_and_docs.h"
#include "nasshare/catalogue.h"
#include "output.h"
#include "paths.h"
#include "share.h"
#include "text.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <string_view>
#include <sys/inotify.h>
#include <sys/mount.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace nasshare::tests {
namespace {

const std::string empty_catalogue = share_xml({});

bool sync_leaves_a_mark = false;

// The folder of a share to add exists; Music and Docs are shared.
Appliance two_shares() {
  return Appliance::single_disks()
      .folder("/mnt/HD/HD_a2/Films")
      .folder("/mnt/HD/HD_a2/Music")
      .folder("/mnt/HD/HD_b2/Docs")
      .shares(share_xml({music(), docs()}));
}

Share films_to_add() {
  return Share{"Films"}.path("/mnt/HD/HD_a2/Films").oplocks("yes").map_archive("no").everyone();
}

Share stored_films() {
  return stored_share("Films").everyone();
}

// As the operation leaves things when it refuses.
void expect_no_change() {
  expect_on_both_volumes(share_xml({music(), docs()}));
  EXPECT_FALSE(exists(temporary_share_file));
  EXPECT_EQ(transcript(), "");
  EXPECT_EQ(Is_Smb_Empty(), 1);
}

// What happens to files of chosen names in folders, in order over all folders.
class FileEvents {
public:
  FileEvents() : queue_(inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {}
  ~FileEvents() { close(queue_); }
  FileEvents(const FileEvents &) = delete;
  FileEvents &operator=(const FileEvents &) = delete;

  void watch(const std::string &folder) {
    const int watch =
        inotify_add_watch(queue_, folder.c_str(), IN_CLOSE_WRITE | IN_MOVED_TO | IN_DELETE | IN_MOVED_FROM);
    folders_[watch] = folder;
  }

  std::string of(const Names &names) {
    std::string text;
    alignas(inotify_event) std::array<char, 16384> events{};
    for (ssize_t size = 0; (size = read(queue_, events.data(), events.size())) > 0;) {
      for (ssize_t at = 0; at < size;) {
        const auto *event = reinterpret_cast<const inotify_event *>(events.data() + at);
        at += static_cast<ssize_t>(sizeof *event + event->len);
        const std::string name = event->len > 0 ? event->name : "";
        const bool written = (event->mask & (IN_CLOSE_WRITE | IN_MOVED_TO)) != 0;
        if (std::ranges::find(names, name) != names.end()) {
          text += folders_[event->wd] + "/" + name + (written ? " written\n" : " deleted\n");
        }
      }
    }
    return text;
  }

private:
  int queue_;
  std::map<int, std::string> folders_;
};

void make_file(const char *path) {
  close(open(path, O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
}

// Runs a change and tells what can be seen from outside, in order.
std::string effects_of(Appliance &machine, const std::function<void()> &change) {
  machine.script("smbcom", ": >/tmp/smbcom");
  sync_leaves_a_mark = true;
  FileEvents events;
  for (const char *folder : {"/tmp", "/mnt/HD_a4/.systemfile", "/mnt/HD_b4/.systemfile"}) {
    events.watch(folder);
  }
  change();
  sync_leaves_a_mark = false;
  return events.of({".smb.xml", ".smb_ads.xml", "sync", "smbcom"});
}

constexpr const char *effects_of_a_change = "/tmp/.smb.xml written\n"
                                            "/mnt/HD_a4/.systemfile/.smb.xml written\n"
                                            "/mnt/HD_b4/.systemfile/.smb.xml written\n"
                                            "/tmp/.smb.xml deleted\n"
                                            "/tmp/sync written\n"
                                            "/tmp/smbcom written\n";

// No XML file can hold these.
constexpr std::array<std::string_view, 10> unstorable{
    "\x01", "a\x1f",    "\x7f\x08",     "\xff",         "caf\xe9",
    "\xc3", "\xc0\xaf", "\xed\xa0\x80", "\xef\xbf\xbe", "\xf4\x90\x80\x80"};
// These look odd and are fine.
constexpr std::array<std::string_view, 10> storable{
    "&", "R&D", "&amp;", "&x;", "&#1;", "<>\"'", "caf\xc3\xa9", "\xf0\x9f\x8e\xb5", "]]>", "a\tb"};

// ---- Adding

TEST(AddShare, StoresTheShareBehindTheOthersOnEveryVolume) {
  two_shares();
  EXPECT_EQ(add_share(films_to_add()), 1);
  expect_on_both_volumes(share_xml({music(), docs(), stored_films()}));
}

TEST(AddShare, StoresEveryField) {
  Appliance::single_disks().folder("/mnt/HD/HD_a2/R&D lab");
  EXPECT_EQ(add_share(Share{"R&D"}
                          .comment("Ideas & <drafts>")
                          .path("/mnt/HD/HD_a2/R&D lab")
                          .browseable("no")
                          .public_("no")
                          .oplocks("no")
                          .map_archive("yes")
                          .read("#alice#")
                          .write("#bob#,#@staff#")
                          .deny("#carol#")
                          .valid("#ignored#")
                          .recycle(1, 1)),
            1);
  expect_on_both_volumes("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                         "<config>\n"
                         "  <samba>\n"
                         "    <count>1</count>\n"
                         "    <item>\n"
                         "      <volume_raid>1</volume_raid>\n"
                         "      <hd_serial>WD-TESTDISK0001</hd_serial>\n"
                         "      <name>R&amp;D</name>\n"
                         "      <comment>Ideas &amp; &lt;drafts&gt;</comment>\n"
                         "      <path>/mnt/HD/HD_a2/R&amp;D lab</path>\n"
                         "      <browseable>yes</browseable>\n"
                         "      <public>yes</public>\n"
                         "      <oplocks>no</oplocks>\n"
                         "      <map_archive>yes</map_archive>\n"
                         "      <read_list>#alice#</read_list>\n"
                         "      <write_list>#bob#,#@staff#</write_list>\n"
                         "      <invalid_users>#nobody#,#carol#</invalid_users>\n"
                         "      <recycle_enable>1</recycle_enable>\n"
                         "      <recycle_tree>1</recycle_tree>\n"
                         "    </item>\n"
                         "  </samba>\n"
                         "</config>\n");
}

TEST(AddShare, OpensAShareWithoutListsToEveryone) {
  two_shares();
  EXPECT_EQ(add_share(films_to_add().write("")), 1);
  expect_on_both_volumes(share_xml({music(), docs(), stored_films()}));
}

TEST(AddShare, LeavesTheListEmptyAndTheTemporaryFileGone) {
  two_shares();
  EXPECT_EQ(add_share(films_to_add()), 1);
  EXPECT_EQ(Is_Smb_Empty(), 1);
  EXPECT_FALSE(exists(temporary_share_file));
  EXPECT_EQ(transcript(), "smbcom\n");
}

TEST(AddShare, WritesSpreadsDeletesFlushesAndReloadsInThatOrder) {
  Appliance machine = two_shares();
  EXPECT_EQ(effects_of(machine, [] { add_share(films_to_add()); }), effects_of_a_change);
}

TEST(AddShare, RefusesInvalidInputAndDoesNotEvenLoad) {
  two_shares().link("/nowhere", "/mnt/HD/HD_a2/broken");
  EXPECT_EQ(add_share(nullptr), 0);
  EXPECT_EQ(add_share(Share{""}.path("/mnt/HD/HD_a2/Films")), 0);
  EXPECT_EQ(add_share(Share{"Films"}), 0);
  EXPECT_EQ(add_share(Share{"Films"}.path("/mnt/HD/HD_a2/absent")), 0);
  EXPECT_EQ(add_share(Share{"Films"}.path("/mnt/HD/HD_a2/Films/absent/..")), 0);
  EXPECT_EQ(add_share(Share{"Films"}.path("/mnt/HD/HD_a2/broken")), 0);
  expect_no_change();
  EXPECT_EQ(kernel_requests(), "");
}

TEST(AddShare, RefusesATakenName) {
  two_shares();
  EXPECT_EQ(add_share(Share{"Music"}.path("/mnt/HD/HD_a2/Films")), 0);
  EXPECT_EQ(add_share(Share{"Docs"}.path("/mnt/HD/HD_a2/Films")), 0);
  expect_no_change();
}

TEST(AddShare, RefusesTheNameOfAUsbShare) {
  two_shares().mount("/dev/sdc1", "/mnt/USB/HD_c1");
  EXPECT_EQ(add_share(Share{"USBDisk1_1"}.path("/mnt/HD/HD_a2/Films")), 0);
  expect_no_change();
}

TEST(AddShare, TakesANameThatDiffersInLetterCase) {
  two_shares();
  EXPECT_EQ(add_share(Share(films_to_add()).path("/mnt/HD/HD_a2/Music")), 1);
  EXPECT_EQ(add_share(Share{"music"}.path("/mnt/HD/HD_a2/Music")), 1);
  EXPECT_EQ(chk_share("music"), 0);
  EXPECT_EQ(chk_share("Music"), 0);
}

TEST(AddShare, TakesANameWhoseShareLostAllItsAccounts) {
  two_shares().shares("/mnt/HD_a4", share_xml({music(), stored_films().write("#ghost#")}));
  EXPECT_EQ(add_share(films_to_add()), 1);
  expect_on_both_volumes(share_xml({music(), docs(), stored_films()}));
}

TEST(AddShare, TakesAPathThatIsAFile) {
  two_shares().file("/mnt/HD/HD_a2/list.txt", "");
  EXPECT_EQ(add_share(Share(films_to_add()).path("/mnt/HD/HD_a2/list.txt")), 1);
  EXPECT_EQ(chk_name_path("Films", "/mnt/HD/HD_a2/list.txt"), 2);
}

TEST(AddShare, TagsTheShareWithTheVolumeOfItsPath) {
  const struct {
    const char *path;
    int volume_raid;
    const char *hd_serial;
  } rows[] = {
      {"/mnt/HD/HD_a2/Films", 1, "WD-TESTDISK0001"}, {"/mnt/HD/HD_a2", 1, "WD-TESTDISK0001"},
      {"/mnt/HD/HD_a2000/x", 1, "WD-TESTDISK0001"}, // compared over the mount point's length
      {"/mnt/HD/HD_b2/Docs", 1, "WD-TESTDISK0002"},  {"/mnt/HD/HD_b2/mnt/HD/HD_a2", 1, "WD-TESTDISK0002"},
      {"/mnt/HD/HD_c2/Films", 9, "as it was"},       {"/home/HD_a2", 9, "as it was"},
  };
  Appliance machine = two_shares();
  for (const auto &row : rows) {
    SCOPED_TRACE(row.path);
    machine.folder(row.path);
    const Share share = Share{row.path}.path(row.path).tag(9, "as it was");
    EXPECT_EQ(add_share(share), 1);
    EXPECT_EQ(share.record().volume_raid, row.volume_raid);
    EXPECT_STREQ(share.record().hd_serial, row.hd_serial);
  }
}

TEST(AddShare, TagsTheShareOfAMirrorWithItsArray) {
  Appliance::mirror().folder("/mnt/HD/HD_a2/Films");
  EXPECT_EQ(add_share(films_to_add().on_disk("WD-TESTDISK0001")), 1);
  expect_on_both_volumes(share_xml({stored_films().on_array(4, "7cc3a0e9:85fa470b:aecd3d11:561a7e11")}));
}

TEST(AddShare, StoresAShareOnNeitherVolumeWithTheCallersTags) {
  two_shares().folder("/home/common");
  EXPECT_EQ(add_share(Share(films_to_add()).path("/home/common").tag(5, "UUID=1:2:3:4")), 1);
  expect_on_both_volumes(
      share_xml({music(), docs(), stored_films().path("/home/common").tag(5, "UUID=1:2:3:4")}));
}

TEST(AddShare, MakesEveryoneExceptReadersExplicit) {
  two_shares();
  const Share share = films_to_add().read("#alice#");
  EXPECT_EQ(add_share(share), 1);
  EXPECT_STREQ(share.record().write_list, "#bob#,#carol#");
  EXPECT_STREQ(share.record().read_list, "#alice#");
  EXPECT_STREQ(share.record().invalid_users, "");
  expect_on_both_volumes(
      share_xml({music(), docs(), stored_films().read("#alice#").write("#bob#,#carol#").deny("#nobody#")}));
}

TEST(AddShare, MakesTheDenialOfEveryoneElseExplicit) {
  two_shares();
  const Share share = films_to_add().write("#@staff#").deny(everyone);
  EXPECT_EQ(add_share(share), 1);
  EXPECT_STREQ(share.record().invalid_users, "#carol#");
  expect_on_both_volumes(
      share_xml({music(), docs(), stored_films().write("#@staff#").deny("#nobody#,#carol#")}));
}

TEST(AddShare, NormalisesTheListsUnlessDomainModeIsExactlyOne) {
  Appliance machine = two_shares();
  for (const char *value : {"", "0", "2", "-1"}) {
    SCOPED_TRACE(value);
    machine.config("/system_mgr/samba/ads_enable", value);
    pss->ads_enable = 1;
    const Share share =
        Share{value[0] == '\0' ? "none" : value}.path("/mnt/HD/HD_a2/Films").read("#alice#").everyone();
    EXPECT_EQ(add_share(share), 1);
    EXPECT_STREQ(share.record().write_list, "#bob#,#carol#");
    EXPECT_EQ(pss->ads_enable, 0);
  }
}

TEST(AddShare, KeepsTheListsInDomainModeAndWritesTheDomainsFilesOnly) {
  Appliance machine =
      two_shares()
          .config("/system_mgr/samba/ads_enable", "1")
          .ads_shares("/mnt/HD_a4", share_xml({music().write("#corpuser#").deny("#nobody#")}));
  Share share = films_to_add().read("#alice#,#ghost#");
  EXPECT_EQ(effects_of(machine, [&share] { EXPECT_EQ(add_share(share), 1); }),
            "/tmp/.smb.xml written\n"
            "/mnt/HD_a4/.systemfile/.smb_ads.xml written\n"
            "/mnt/HD_b4/.systemfile/.smb_ads.xml written\n"
            "/tmp/.smb.xml deleted\n"
            "/tmp/sync written\n"
            "/tmp/smbcom written\n");
  EXPECT_STREQ(share.record().write_list, everyone);
  const std::string text = share_xml(
      {music().write("#corpuser#").deny("#nobody#"), stored_films().read("#alice#,#ghost#").everyone()});
  EXPECT_EQ(read_file(first_domain_file), text);
  EXPECT_EQ(read_file(second_domain_file), text);
  expect_on_both_volumes(share_xml({music(), docs()}));
}

TEST(AddShare, DropsWhatTheLoadDropped) {
  two_shares().shares("/mnt/HD_a4", share_xml({music().write("#alice#,#ghost#").deny("#nobody#"),
                                               stored_share("Gone").everyone().write("#ghost#")}));
  EXPECT_EQ(add_share(films_to_add()), 1);
  expect_on_both_volumes(share_xml({music().write("#alice#").deny("#nobody#"), docs(), stored_films()}));
}

TEST(AddShare, StoresNoShareOfTheUsbDiskInTheFirstSlot) {
  two_shares().mount("/dev/sdc1", "/mnt/USB/HD_c1");
  EXPECT_EQ(add_share(films_to_add()), 1);
  expect_on_both_volumes(share_xml({music(), docs(), stored_films()}));
}

TEST(AddShare, DoesNotStoreOplocksThatTheServicesForbid) {
  two_shares().config("/system_mgr/afp/enable", "1");
  EXPECT_EQ(add_share(films_to_add()), 1);
  expect_on_both_volumes(share_xml({music(), docs(), stored_films()}));
}

TEST(AddShare, ReachesHiddenPartitionsWithoutAVolume) {
  two_shares().hidden("/dev/sdc4", "/mnt/HD_c4");
  EXPECT_EQ(add_share(films_to_add()), 1);
  EXPECT_EQ(read_file("/mnt/HD_c4/.systemfile/.smb.xml"), share_xml({music(), docs(), stored_films()}));
}

TEST(AddShare, DoesNotReportAVolumeThatTakesNoFile) {
  two_shares().remove("/mnt/HD_a4/.systemfile").shares("/mnt/HD_b4", share_xml({docs()}));
  EXPECT_EQ(output_of([] { EXPECT_EQ(add_share(films_to_add()), 1); }),
            "CP: dest file exist and can't remove\n");
  EXPECT_EQ(read_file(second_share_file), share_xml({docs(), stored_films()}));
  EXPECT_EQ(transcript(), "smbcom\n");
}

TEST(AddShare, DoesNotMindAReloadThatFails) {
  two_shares().command("smbcom", "", 1);
  EXPECT_EQ(add_share(films_to_add()), 1);
}

TEST(AddShare, ReplacesAStaleTemporaryFile) {
  two_shares().file(temporary_share_file, "left by an earlier program");
  EXPECT_EQ(add_share(films_to_add()), 1);
  expect_on_both_volumes(share_xml({music(), docs(), stored_films()}));
  EXPECT_FALSE(exists(temporary_share_file));
}

TEST(AddShare, LeavesTheVolumesWhenTheTemporaryFileCannotBeWritten) {
  two_shares().read_only("/tmp");
  EXPECT_EQ(output_of([] { EXPECT_EQ(add_share(films_to_add()), 0); }), "");
  expect_on_both_volumes(share_xml({music(), docs()}));
  EXPECT_EQ(Is_Smb_Empty(), 1);
}

TEST(AddShare, LeavesTheVolumesWhenTheTemporaryFileIsIncomplete) {
  two_shares();
  ASSERT_EQ(::mount("small", "/tmp", "tmpfs", 0, "size=4k"), 0);
  Share share = films_to_add().comment(std::string(500, 'c')).read(std::string(12000, 'r'));
  EXPECT_EQ(output_of([&share] { EXPECT_EQ(add_share(share), 0); }), "");
  expect_no_change();
}

TEST(AddShare, RefusesTextThatXmlCannotHold) {
  Appliance machine = two_shares();
  for (const std::string_view bytes : unstorable) {
    const std::string text(bytes);
    SCOPED_TRACE(testing::PrintToString(text));
    machine.folder("/mnt/HD/HD_a2/" + text);
    EXPECT_EQ(add_share(Share{text}.path("/mnt/HD/HD_a2/Films")), 0);
    EXPECT_EQ(add_share(films_to_add().comment(text)), 0);
    EXPECT_EQ(add_share(Share(films_to_add()).path("/mnt/HD/HD_a2/" + text)), 0);
    EXPECT_EQ(add_share(films_to_add().oplocks(text)), 0);
    EXPECT_EQ(add_share(films_to_add().map_archive(text)), 0);
    EXPECT_EQ(add_share(films_to_add().read("#" + text + "#")), 0);
    EXPECT_EQ(add_share(films_to_add().write("#" + text + "#")), 0);
    EXPECT_EQ(add_share(films_to_add().deny("#" + text + "#")), 0);
  }
  expect_no_change();
}

TEST(AddShare, RefusesATagThatXmlCannotHold) {
  two_shares().folder("/home/common");
  for (const std::string_view text : unstorable) {
    EXPECT_EQ(add_share(Share{"Films"}.path("/home/common").tag(1, text)), 0) << testing::PrintToString(text);
  }
  expect_no_change();
}

TEST(AddShare, StoresEveryTextThatXmlCanHold) {
  Appliance machine = two_shares();
  for (const std::string_view bytes : storable) {
    const std::string text(bytes);
    SCOPED_TRACE(text);
    machine.shares(empty_catalogue);
    EXPECT_EQ(add_share(Share(films_to_add()).comment(text).write("#alice#").read("#" + text + "#")), 1);
    EXPECT_NE(read_file(first_share_file).find("<name>Films</name>"), std::string::npos);
    EXPECT_EQ(chk_share("Films"), 0);
  }
}

TEST(AddShare, StoresTheLongestTexts) {
  const std::string name(511, '&');
  std::string path = "/mnt/HD/HD_a2";
  while (path.size() + 201 < 4095) {
    path += "/" + std::string(200, '&');
  }
  path += "/" + std::string(4094 - path.size(), 'p');
  two_shares().folder(path);
  EXPECT_EQ(add_share(Share(name).comment(std::string(511, '<')).path(path).everyone()), 1);
  EXPECT_EQ(chk_name_path(name.c_str(), path.c_str()), 2);
  get_samba_info();
  EXPECT_EQ(check_smb_share_name(name.c_str())->comment, std::string(511, '<'));
  EXPECT_EQ(chk_share("Docs"), 0);
}

TEST(AddShare, StoresTheLongestLists) {
  const std::string list = repeated("#alice#,", 1535) + long_entry(7);
  ASSERT_EQ(list.size(), 12287U);
  two_shares();
  const Share share = films_to_add().write(list);
  EXPECT_EQ(add_share(share), 1);
  EXPECT_NE(read_file(first_share_file).find("<write_list>" + list + "</write_list>"), std::string::npos);
  EXPECT_EQ(share.record().write_list, list);
}

// ---- Changing

TEST(ModShare, OverwritesTheShareInItsPlace) {
  two_shares();
  EXPECT_EQ(mod_share(Share(films_to_add()).comment("unknown")), 0);
  EXPECT_EQ(mod_share(Share{"Music"}
                          .comment("All of it")
                          .path("/mnt/HD/HD_a2/Films")
                          .browseable("no")
                          .oplocks("no")
                          .map_archive("yes")
                          .read("#alice#")
                          .recycle(1)),
            1);
  expect_on_both_volumes(share_xml({stored_share("Music")
                                        .path("/mnt/HD/HD_a2/Films")
                                        .everyone()
                                        .comment("All of it")
                                        .oplocks("no")
                                        .map_archive("yes")
                                        .read("#alice#")
                                        .write("")
                                        .deny("#nobody#")
                                        .recycle(1),
                                    docs()}));
}

TEST(ModShare, HasTheEffectsOfAnAddInTheSameOrder) {
  Appliance machine = two_shares();
  EXPECT_EQ(effects_of(machine, [] { EXPECT_EQ(mod_share(music()), 1); }), effects_of_a_change);
  EXPECT_EQ(transcript(), "smbcom\n");
  EXPECT_EQ(Is_Smb_Empty(), 1);
}

TEST(ModShare, MovesTheShareToTheVolumeOfItsNewPath) {
  two_shares();
  const Share moved = music().path("/mnt/HD/HD_b2/Docs");
  EXPECT_EQ(mod_share(moved), 1);
  EXPECT_STREQ(moved.record().hd_serial, "WD-TESTDISK0002");
  expect_on_both_volumes(share_xml({music().path("/mnt/HD/HD_b2/Docs").on_disk("WD-TESTDISK0002"), docs()}));
}

TEST(ModShare, KeepsTheCallersTagsForAPathOnNeitherVolume) {
  two_shares().folder("/home/common");
  EXPECT_EQ(mod_share(music().path("/home/common").tag(6, "elsewhere")), 1);
  expect_on_both_volumes(share_xml({music().path("/home/common").tag(6, "elsewhere"), docs()}));
}

TEST(ModShare, RefusesAnAbsentName) {
  two_shares();
  EXPECT_EQ(mod_share(films_to_add()), 0);
  EXPECT_EQ(mod_share(Share{"music"}.path("/mnt/HD/HD_a2/Music")), 0);
  expect_no_change();
}

TEST(ModShare, RefusesInvalidInputAndDoesNotEvenLoad) {
  two_shares();
  EXPECT_EQ(mod_share(nullptr), 0);
  EXPECT_EQ(mod_share(Share{""}.path("/mnt/HD/HD_a2/Music")), 0);
  EXPECT_EQ(mod_share(Share{"Music"}), 0);
  EXPECT_EQ(mod_share(Share{"Music"}.path("/mnt/HD/HD_a2/absent")), 0);
  expect_no_change();
  EXPECT_EQ(kernel_requests(), "");
}

TEST(ModShare, RefusesTextThatXmlCannotHold) {
  two_shares();
  for (const std::string_view bytes : unstorable) {
    const std::string text(bytes);
    SCOPED_TRACE(testing::PrintToString(text));
    EXPECT_EQ(mod_share(music().comment(text)), 0);
    EXPECT_EQ(mod_share(music().oplocks(text)), 0);
    EXPECT_EQ(mod_share(music().read("#" + text + "#")), 0);
    EXPECT_EQ(mod_share(music().write("#" + text + "#")), 0);
    EXPECT_EQ(mod_share(music().deny("#" + text + "#")), 0);
  }
  expect_no_change();
}

TEST(ModShare, NormalisesTheListsInLocalMode) {
  two_shares();
  pss->ads_enable = 1;
  const Share share = music().read("#alice#");
  EXPECT_EQ(mod_share(share), 1);
  EXPECT_STREQ(share.record().write_list, "#bob#,#carol#");
  expect_on_both_volumes(
      share_xml({music().read("#alice#").write("#bob#,#carol#").deny("#nobody#"), docs()}));
}

TEST(ModShare, KeepsTheListsInDomainModeAndWritesTheDomainsFilesOnly) {
  two_shares().config("/system_mgr/samba/ads_enable", "1").ads_shares(share_xml({music()}));
  EXPECT_EQ(mod_share(docs()), 0);
  EXPECT_EQ(mod_share(music().read("#ghost#")), 1);
  EXPECT_EQ(read_file(first_domain_file), share_xml({music().read("#ghost#")}));
  EXPECT_EQ(read_file(second_domain_file), share_xml({music().read("#ghost#")}));
  expect_on_both_volumes(share_xml({music(), docs()}));
}

TEST(ModShare, LeavesTheVolumesWhenTheTemporaryFileCannotBeWritten) {
  two_shares().read_only("/tmp");
  EXPECT_EQ(mod_share(music().comment("new")), 0);
  expect_on_both_volumes(share_xml({music(), docs()}));
  EXPECT_EQ(Is_Smb_Empty(), 1);
}

// ---- Deleting

TEST(DelShare, TakesTheShareOutOfEveryVolume) {
  two_shares();
  EXPECT_EQ(del_share("Music"), 1);
  expect_on_both_volumes(share_xml({docs()}));
  EXPECT_EQ(transcript(), "smbcom\n");
  EXPECT_FALSE(exists(temporary_share_file));
  EXPECT_EQ(Is_Smb_Empty(), 1);
}

TEST(DelShare, HasTheEffectsOfAnAddInTheSameOrder) {
  Appliance machine = two_shares();
  EXPECT_EQ(effects_of(machine, [] { del_share("Music"); }), effects_of_a_change);
}

TEST(DelShare, OfTheLastShareLeavesAnEmptyCatalogueOnEveryVolume) {
  two_shares();
  EXPECT_EQ(del_share("Music"), 1);
  EXPECT_EQ(del_share("Docs"), 1);
  expect_on_both_volumes(empty_catalogue);
  EXPECT_FALSE(exists(temporary_share_file));
}

TEST(DelShare, OfTheLastShareCountsNoUsbDiskInTheFirstSlot) {
  two_shares().shares(share_xml({music()})).mount("/dev/sdc1", "/mnt/USB/HD_c1");
  EXPECT_EQ(del_share("Music"), 1);
  expect_on_both_volumes(empty_catalogue);
}

TEST(DelShare, OfTheLastShareLeavesTheUsbDisksOfOtherNames) {
  two_shares()
      .shares(share_xml({music()}))
      .shared_name("USBDisk2_1 = HD_c1\n")
      .mount("/dev/sdc1", "/mnt/USB/HD_c1");
  EXPECT_EQ(del_share("Music"), 1);
  expect_on_both_volumes(share_xml(
      {stored_share("USBDisk2_1").path("/mnt/USB/HD_c1").everyone().comment("USB Device Share").tag(0, "")}));
}

TEST(DelShare, DoesNotTouchTheSharedFolder) {
  two_shares().file("/mnt/HD/HD_a2/Music/song", "la");
  EXPECT_EQ(del_share("Music"), 1);
  EXPECT_EQ(read_file("/mnt/HD/HD_a2/Music/song"), "la");
}

TEST(DelShare, DeletesAShareWhoseFolderIsGone) {
  two_shares().remove("/mnt/HD/HD_a2/Music");
  EXPECT_EQ(del_share("Music"), 1);
  expect_on_both_volumes(share_xml({docs()}));
}

TEST(DelShare, RefusesAnEmptyNameAndDoesNotEvenLoad) {
  two_shares();
  EXPECT_EQ(del_share(nullptr), 0);
  EXPECT_EQ(del_share(""), 0);
  expect_no_change();
  EXPECT_EQ(kernel_requests(), "");
}

TEST(DelShare, RefusesAnAbsentName) {
  two_shares();
  for (const std::string &name :
       {std::string("Films"), std::string("music"), std::string("Music "), std::string(600, 'M')}) {
    EXPECT_EQ(del_share(name.c_str()), 0) << name;
  }
  expect_no_change();
}

TEST(DelShare, WritesTheDomainsFilesOnlyInDomainMode) {
  two_shares().config("/system_mgr/samba/ads_enable", "1").ads_shares(share_xml({music(), docs()}));
  EXPECT_EQ(del_share("Docs"), 1);
  EXPECT_EQ(read_file(first_domain_file), share_xml({music()}));
  EXPECT_EQ(read_file(second_domain_file), share_xml({music()}));
  expect_on_both_volumes(share_xml({music(), docs()}));
}

TEST(DelShare, FindsANameThatIsEscapedInTheFile) {
  two_shares().shares("/mnt/HD_a4", share_xml({stored_share("R&D").path("/mnt/HD/HD_a2/lab").everyone()}));
  EXPECT_EQ(del_share("R&amp;D"), 0);
  EXPECT_EQ(del_share("R&D"), 1);
  expect_on_both_volumes(share_xml({docs()}));
}

TEST(DelShare, LeavesTheVolumesWhenTheTemporaryFileCannotBeWritten) {
  two_shares().read_only("/tmp");
  EXPECT_EQ(del_share("Music"), 0);
  expect_on_both_volumes(share_xml({music(), docs()}));
}

} // namespace
} // namespace nasshare::tests

// Wins over the C library's.
extern "C" [[gnu::visibility("default")]] void sync() noexcept {
  if (nasshare::tests::sync_leaves_a_mark) {
    nasshare::tests::make_file("/tmp/sync");
  }
  syscall(SYS_sync);
}
