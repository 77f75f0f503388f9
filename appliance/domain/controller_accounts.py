# The accounts of the private domain, put straight into the controller's database before it is started: the
# users dora, emil, fritz and "mary ann" with the passwords dora-password, ... and mary-password, and the group
# engineers of dora and emil. The appliance has accounts of other names. Passwords may be simple and never expire.
from samba.auth import system_session
from samba.param import LoadParm
from samba.samdb import SamDB

settings = LoadParm()
settings.load_default()
accounts = SamDB(url=settings.samdb_url(), session_info=system_session(), lp=settings)
accounts.set_pwdProperties("0")
accounts.set_minPwdLength("4")
accounts.set_maxPwdAge("0")
for name in ("dora", "emil", "fritz", "mary ann"):
    accounts.newuser(name, name.split()[0] + "-password", setpassword=True)
accounts.newgroup("engineers")
accounts.add_remove_group_members("engineers", ["dora", "emil"], add_members_operation=True)
