"""Prints where the module is installed, relative to the install prefix given:
Debian's folder for packaged modules under /usr, else the interpreter's own
folder when it lies under the prefix (/usr/local), else a site-packages folder.

usage: site_dir.py PREFIX
"""
import os
import sys
import sysconfig

prefix = os.path.normpath(sys.argv[1])
under_prefix = {"base": prefix, "platbase": prefix}
if prefix == "/usr" and "deb_system" in sysconfig.get_scheme_names():
    path = sysconfig.get_path("platlib", "deb_system", under_prefix)
elif sysconfig.get_path("platlib").startswith(prefix.rstrip("/") + "/"):
    path = sysconfig.get_path("platlib")
else:
    path = sysconfig.get_path("platlib", "posix_prefix", under_prefix)
print(os.path.relpath(path, prefix))
