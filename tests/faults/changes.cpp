#include "changes.h"

#include "../dfs/dfs_files.h"
#include "appliance.h"
#include "nasshare/acl.h"
#include "nasshare/dfs.h"
#include "nasshare/platform.h"
#include "share.h"

#include <utility>

namespace nasshare::tests {

namespace {

constexpr const char *database = "/etc/NAS_CFG/config.xml";
constexpr const char *serials[2] = {"WD-TESTDISK0001", "WD-TESTDISK0002"};
constexpr const char *volumes[2] = {"/mnt/HD/HD_a2/", "/mnt/HD/HD_b2/"};
const Files::key_type share_files[2] = {"/mnt/HD_a4/.systemfile/.smb.xml", "/mnt/HD_b4/.systemfile/.smb.xml"};
const Files::key_type domain_files[2] = {"/mnt/HD_a4/.systemfile/.smb_ads.xml",
                                         "/mnt/HD_b4/.systemfile/.smb_ads.xml"};

// A share as it stands in the file.
Share stored_share(int volume, const std::string &name) {
  Share share{name};
  share.path(volumes[volume] + name).on_disk(serials[volume]).browseable("yes").public_("yes");
  return share.oplocks("yes").map_archive("no");
}

Share music() {
  return stored_share(0, "Music").read("#alice#").write("#bob#").deny("#nobody#");
}

Share photos() {
  return stored_share(1, "Photos").everyone();
}

Share docs() {
  return stored_share(1, "Docs").write("#@staff#").deny("#nobody#,#carol#");
}

using Shares = std::vector<Share>;

Shares shares_before() {
  return {music(), photos(), docs()};
}

// ---- What follows: one more share, which a whole load puts behind those of both volumes

Share one_more() {
  return stored_share(0, "Videos").write("#bob#").deny("#nobody#");
}

int add_one_more() {
  return add_share(
      Share{"Videos"}.path("/mnt/HD/HD_a2/Videos").write("#bob#").oplocks("yes").map_archive("no"));
}

// The shares that a file gives its own volume when it is loaded.
void load(Shares &list, int volume, const Shares &file) {
  for (const Share &share : file) {
    if (std::string(share.record().hd_serial) == serials[volume]) {
      list.push_back(share);
    }
  }
}

// `loaded` is what `stored` becomes when it is loaded again.
Change share_change(const std::string &name, const std::function<int()> &run, const Shares &stored,
                    const Shares &loaded, const Files::key_type (&paths)[2] = share_files,
                    const Shares &before = shares_before()) {
  Change change{name, [] {}, run, {}, add_one_more, {}};
  for (const std::string &path : paths) {
    change.after[path] = share_xml(stored);
  }
  const std::vector<std::string> files(std::begin(paths), std::end(paths));
  change.after_next = [=](const Files &now) {
    Shares list;
    for (int volume = 0; volume < 2; ++volume) {
      const bool is_new = now.at(files[static_cast<std::size_t>(volume)]) == share_xml(stored);
      load(list, volume, is_new ? loaded : before);
    }
    list.push_back(one_more());
    Files next = now;
    for (const std::string &path : files) {
      next[path] = share_xml(list);
    }
    return next;
  };
  return change;
}

// ---- The DFS files and the configuration: the next change puts its own text into the old or new file

std::string replaced(std::string text, const std::string &old, const std::string &fresh) {
  const std::size_t place = text.find(old);
  return place == std::string::npos ? "no " + old : text.replace(place, old.size(), fresh);
}

std::function<Files(const Files &)> replacing_in(const std::string &path, const std::string &old,
                                                 const std::string &fresh) {
  return [=](Files files) {
    files[path] = replaced(files.at(path), old, fresh);
    return files;
  };
}

const std::vector<Link> links_before{{"nas1", "music", "songs", "Media"}, {"nas2", "docs", "papers", "Work"}};

std::string configuration_before(int domain_mode) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<config>\n  <system_mgr>\n    <samba>\n"
         "      <workgroup>HOME</workgroup>\n      <netbios_name>cellar</netbios_name>\n"
         "      <server_string>Storage in the cellar</server_string>\n      <ads_enable>" +
         std::to_string(domain_mode) + "</ads_enable>\n    </samba>\n  </system_mgr>\n</config>\n";
}

int add_a_link_more() {
  return static_cast<int>(add_dfs_node("nas9", "last", "last", "Work"));
}

std::function<Files(const Files &)> with_a_link_more() {
  const std::string link = "    <item>\n" + dfs_element("host", "nas9") + dfs_element("share", "last") +
                           dfs_element("local", "last") + dfs_element("group", "Work") + "    </item>\n";
  return replacing_in(link_path, "  </dfs>\n", link + "  </dfs>\n");
}

Files make_appliance_in(int domain_mode) {
  Appliance machine = Appliance::single_disks();
  // Commands that take as little time as can be, in one write.
  machine.script("sg_scan",
                 "printf '/dev/sda: scsi0 channel=0 id=0 lun=0 [em]\\n/dev/sdb: scsi1 channel=0 id=0 "
                 "lun=0 [em]\\n'");
  machine.script("smbcom", ":");
  for (const char *folder : {"Music", "Videos"}) {
    machine.folder(volumes[0] + std::string(folder));
  }
  for (const char *folder : {"Photos", "Docs", "Films"}) {
    machine.folder(volumes[1] + std::string(folder));
  }
  machine.file(database, configuration_before(domain_mode));
  machine.file(link_path, link_file(links_before)).file(group_path, group_file({"Media", "Work"}));
  for (const char *hidden : {"/mnt/HD_a4", "/mnt/HD_b4"}) {
    machine.shares(hidden, share_xml(shares_before()));
  }
  return stored_files();
}

// Accounts that only the domain knows.
Shares domain_shares_before() {
  return {stored_share(0, "Music").read("#dora#").write("#@Sales Team#").deny("#nobody#"),
          stored_share(1, "Docs").write("#dora#").deny("#nobody#")};
}

} // namespace

Files make_appliance() {
  return make_appliance_in(0);
}

Files make_domain_appliance() {
  make_appliance_in(1);
  for (const std::string &path : domain_files) {
    Appliance{}.file(path, share_xml(domain_shares_before()));
  }
  Appliance{}.script("smbcom", ":");
  return stored_files();
}

// Everyone but carol: the accounts are read one by one.
Change adding_a_share() {
  const Share record =
      Share{"Films"}.path("/mnt/HD/HD_b2/Films").everyone().deny("#carol#").oplocks("yes").map_archive("no");
  const auto run = [record] { return add_share(record); };
  Shares after = shares_before();
  after.push_back(stored_share(1, "Films").write("#alice#,#bob#").deny("#nobody#,#carol#"));
  return share_change("add_share", run, after, after);
}

Change modifying_a_share() {
  const Share photos_for_staff =
      stored_share(1, "Photos").comment("from & to").read("#@staff#").write("#carol#").deny("#nobody#");
  const Share record = Share{"Photos"}
                           .path("/mnt/HD/HD_b2/Photos")
                           .comment("from & to")
                           .read("#@staff#")
                           .write("#carol#")
                           .oplocks("yes")
                           .map_archive("no");
  const auto run = [record] { return mod_share(record); };
  const Shares after{music(), photos_for_staff, docs()};
  return share_change("mod_share", run, after, after);
}

Change deleting_a_share() {
  const Shares after{music(), photos()};
  return share_change(
      "del_share", [] { return del_share("Docs"); }, after, after);
}

// A share on each volume; everyone of the second becomes everyone but alice.
Change changing_an_account() {
  const Share music_after = stored_share(0, "Music").write("#bob#,#alice#").deny("#nobody#");
  const Share photos_after = stored_share(1, "Photos").write("#bob#,#carol#");
  Change change = share_change("acnt_mod_share", [] { return acnt_mod_share("alice"); },
                               {music_after, Share{photos_after}.deny("#alice#"), docs()},
                               {music_after, Share{photos_after}.deny("#nobody#,#alice#"), docs()});
  change.prepare = [] {
    insert_acnt_node("Music", 2);
    insert_acnt_node("Photos", 3);
  };
  return change;
}

Change adding_a_share_in_domain_mode() {
  const Share record =
      Share{"Films"}.path("/mnt/HD/HD_b2/Films").write("#dora#").oplocks("yes").map_archive("no");
  const auto run = [record] { return add_share(record); };
  Shares after = domain_shares_before();
  after.push_back(stored_share(1, "Films").write("#dora#").deny("#nobody#"));
  return share_change("add_share in domain mode", run, after, after, domain_files, domain_shares_before());
}

Change adding_a_link() {
  std::vector<Link> links = links_before;
  links.push_back({"nas3", "films", "movies", "Media"});
  return {"add_dfs_node",
          [] {},
          [] { return static_cast<int>(add_dfs_node("nas3", "films", "movies", "Media")); },
          {{link_path, link_file(links)}},
          add_a_link_more,
          with_a_link_more()};
}

Change renaming_a_group() {
  std::vector<Link> links = links_before;
  links.front().group = "Leisure";
  // A change of either file, so that both names are free of what the interrupted one left.
  const auto next = [] { return add_dfs_group_node("Archive") == 1 ? add_a_link_more() : 0; };
  const auto after_next = [](const Files &now) {
    const std::string group = "    <item>\n" + dfs_element("group", "Archive") + "    </item>\n";
    return with_a_link_more()(replacing_in(group_path, "  </dfs>\n", group + "  </dfs>\n")(now));
  };
  return {"mod_dfs_group_node",
          [] {},
          [] { return static_cast<int>(mod_dfs_group_node("Media", "Leisure")); },
          {{group_path, group_file({"Leisure", "Work"})}, {link_path, link_file(links)}},
          next,
          after_next};
}

Change storing_a_value() {
  return {"xml_set_str",
          [] {},
          [] {
            xml_set_str("/system_mgr/samba/workgroup", "STUDIO");
            return 1;
          },
          {{database, replaced(configuration_before(0), "HOME", "STUDIO")}},
          [] {
            xml_set_str("/system_mgr/samba/netbios_name", "attic");
            return 1;
          },
          replacing_in(database, "cellar", "attic")};
}

} // namespace nasshare::tests
