# SPDX-License-Identifier: GPL-3.0-or-later
"""Disks that are full or read-only, in mounts that this process and its children alone see."""

import ctypes
import errno
import os
import subprocess

CLONE_NEWNS, CLONE_NEWUSER = 0x00020000, 0x10000000


def make_mounts_private():
    """Gives this process mounts of its own, which end with it. Returns why that is not possible, or an empty text."""
    user, group = os.geteuid(), os.getegid()
    library = ctypes.CDLL(None, use_errno=True)
    if library.unshare(CLONE_NEWNS if user == 0 else CLONE_NEWNS | CLONE_NEWUSER) != 0:
        return "needs mounts of its own: " + os.strerror(ctypes.get_errno())
    if user != 0:
        for name, text in (("setgroups", "deny"), ("uid_map", "0 %d 1" % user), ("gid_map", "0 %d 1" % group)):
            with open("/proc/self/" + name, "w", encoding="ascii") as file:
                file.write(text)
    made = subprocess.run(["mount", "--make-rprivate", "/"], capture_output=True, text=True, check=False)
    return "" if made.returncode == 0 else "needs mounts of its own: " + made.stderr.strip()


def mount(*arguments):
    subprocess.run(["mount", *map(str, arguments)], check=True)


class Disk:
    """A small disk in the folder, which is empty so far."""

    def __init__(self, folder, kilobytes=4096):
        self.folder = folder
        folder.mkdir(parents=True, exist_ok=True)
        mount("-t", "tmpfs", "-o", "size=%dk,mode=0700" % kilobytes, "tmpfs", folder)
        self.ballast = folder / ".ballast"

    def fill(self, leave=0):
        """Leaves so many kilobytes."""
        with open(self.ballast, "ab", buffering=0) as file:
            try:
                while True:
                    file.write(bytes(4096))
            except OSError as error:
                if error.errno != errno.ENOSPC:
                    raise
            file.truncate(file.tell() - leave * 1024)

    def free(self):
        self.ballast.unlink()

    def protect(self):
        mount("--bind", self.folder, self.folder)
        mount("-o", "remount,bind,ro", self.folder)

    def unprotect(self):
        # Lazily: a program may have a file open there.
        subprocess.run(["umount", "--lazy", str(self.folder)], check=True)

    def close(self):
        while os.path.ismount(self.folder):
            self.unprotect()
