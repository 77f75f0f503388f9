/*
 * Active Directory membership: joining and leaving a domain, and checking
 * access lists against the domain's accounts.
 *
 * The settings are those that read_global_setting (smbconf.h) reads: domain
 * mode is switched in the configuration database before ads_start and before
 * ads_stop is called.
 */
#ifndef NASSHARE_ADS_H
#define NASSHARE_ADS_H

#include "nasshare/catalogue.h"

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/* Writes /etc/nsswitch.conf and /etc/krb5.conf, restarts the Samba service, joins the domain, obtains a
   ticket and starts winbindd. 1 done; 2 domain mode is off, or the configuration cannot be read, nothing was
   run; 0 a configuration file is missing after it was written; else the code of ads_join_domain or ads_kinit
   that stopped it, with nothing taken back. */
int ads_start(void);

/* Back to local accounts: local /etc/nsswitch.conf, no /etc/krb5.conf, winbindd ended, Samba service stopped.
   1 done; 3 the configuration still asks for domain mode, or cannot be read, nothing was changed. */
int ads_stop(void);

/* Runs "net ads join" and classifies its output: 50 joined, 51 clock difference, 52 logon failure, 53 badly
   formed account name or service principal names not set, 55 the join failed, 56 another failure or the
   command could not be started. */
int ads_join_domain(void);

/* Runs "kinit" and classifies its output: 100 ticket obtained, 101 clock skew, 102 wrong password, 103
   unknown client, 104 controller's address cannot be resolved, 105 another error, 56 the command could not be
   started. */
int ads_kinit(void);

/* Write /etc/krb5.conf (krb5.conf(5)) from the settings and /etc/nsswitch.conf (nsswitch.conf(5)) for the
   current mode, in place. A file that cannot be opened is skipped. */
void ads_create_krb5_conf(void);
void ads_create_nsswitch_conf(void);

/* Does nothing and returns its argument. */
int ads_create_pam_samba(int value);

/* 1 when "wbinfo -u" ("wbinfo -g") lists exactly that name among its first 800 (200) lines, else 0: in a
   larger domain the names behind them are unknown. The appliance's own computer account is passed over, for
   users "krbtgt" too. A group's name comes without '@'. A wbinfo that cannot be started or is killed keeps
   create_smb_conf from writing what has been checked with it. */
int ads_check_user(const char *name);
int ads_check_group(const char *name);

/* Drops every entry of the access list (12288 bytes) that the domain does not list; the everyone value
   "#nobody#,#@allaccount#" and "#nobody#" alone stay. An entry of a list of those who are denied goes the
   same way. */
void ads_run_check_samba_list(char *list);

/* Does so for the three lists of every listed share, and removes shares without any list. */
void ads_check_user_group(void);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
