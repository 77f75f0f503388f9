// The share of a whole volume bears the volume's configured name.
#include "base/text.h"
#include "model/volumes.h"
#include "nasshare/catalogue.h"

using namespace nasshare;

void fix_share_name(char *name, int volume) {
  if (name == nullptr || !is_volume(volume)) {
    return;
  }
  const auto configured = view(pss->vol_share_name[volume]);
  if (!configured.empty()) {
    assign({name, name_width}, configured);
  }
}
