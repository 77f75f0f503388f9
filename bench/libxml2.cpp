// The same files by libxml2 alone, as its documentation has it done.
#include "libxml2.h"

#include "nasshare/catalogue.h"

#include <benchmark/benchmark.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>
#include <stdexcept>

namespace nasshare::bench {
namespace {

struct Free {
  void operator()(xmlDoc *document) const { xmlFreeDoc(document); }
  void operator()(xmlChar *text) const { xmlFree(text); }
};
using Document = std::unique_ptr<xmlDoc, Free>;
using Text = std::unique_ptr<xmlChar, Free>;

const xmlChar *xml(const char *text) {
  return reinterpret_cast<const xmlChar *>(text);
}

void require(bool condition, const std::string &path) {
  if (!condition) {
    throw std::runtime_error(path + ": libxml2 fails");
  }
}

void add(xmlNode *parent, const char *name, const char *text) {
  xmlNewChild(parent, nullptr, xml(name), xml(text));
}

void add(xmlNode *parent, const char *name, int value) {
  add(parent, name, std::to_string(value).c_str());
}

void add_share(xmlNode *parent, const smb_share &share) {
  xmlNode *const item = xmlNewChild(parent, nullptr, xml("item"), nullptr);
  add(item, "volume_raid", share.volume_raid);
  add(item, "hd_serial", share.hd_serial);
  add(item, "name", share.name);
  add(item, "comment", share.comment);
  add(item, "path", share.path);
  add(item, "browseable", share.browseable);
  add(item, "public", share.public_);
  add(item, "oplocks", share.oplocks);
  add(item, "map_archive", share.map_archive);
  add(item, "read_list", share.read_list);
  add(item, "write_list", share.write_list);
  add(item, "invalid_users", share.invalid_users);
  add(item, "recycle_enable", share.recycle_enable);
  add(item, "recycle_tree", share.recycle_tree);
}

} // namespace

void read_by_libxml2(const std::string &path) {
  const Document document(xmlReadFile(path.c_str(), nullptr, 0));
  require(document != nullptr, path);
  xmlNode *const samba = xmlFirstElementChild(xmlDocGetRootElement(document.get()));
  for (auto *item = xmlFirstElementChild(samba); item != nullptr; item = xmlNextElementSibling(item)) {
    for (auto *field = xmlFirstElementChild(item); field != nullptr; field = xmlNextElementSibling(field)) {
      const Text text(xmlNodeGetContent(field));
      benchmark::DoNotOptimize(text.get());
    }
  }
}

void store_by_libxml2(const std::string &path) {
  const Document document(xmlNewDoc(xml("1.0")));
  xmlNode *const config = xmlNewNode(nullptr, xml("config"));
  xmlDocSetRootElement(document.get(), config);
  xmlNode *const samba = xmlNewChild(config, nullptr, xml("samba"), nullptr);
  add(samba, "count", pss->count);
  const auto *share = pss->head;
  for (int i = 0; i < pss->count; ++i) {
    add_share(samba, *share);
    share = share->next;
  }
  require(xmlSaveFormatFileEnc(path.c_str(), document.get(), "UTF-8", 1) > 0, path);
}

} // namespace nasshare::bench
