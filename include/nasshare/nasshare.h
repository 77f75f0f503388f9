/* The whole interface of libnasshare. */
#ifndef NASSHARE_H
#define NASSHARE_H

#include "nasshare/acl.h"
#include "nasshare/ads.h"
#include "nasshare/catalogue.h"
#include "nasshare/dfs.h"
#include "nasshare/platform.h"
#include "nasshare/smbconf.h"
#include "nasshare/special.h"
#include "nasshare/support.h"
#include "nasshare/volume.h"

#endif
