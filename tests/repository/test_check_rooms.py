# SPDX-License-Identifier: GPL-3.0-or-later
"""The check of the rooms names includes that run back up, folders that are not listed and folders that are too large."""

import os
import pathlib
import subprocess
import tempfile
import unittest

SOURCES = pathlib.Path(os.environ["OXC_SOURCES"])


class CheckRooms(unittest.TestCase):
    def check(self, files, rooms="low\nlow/inner\nhigh\n", folders=("low/inner", "high")):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            (root / "rooms.txt").write_text(rooms)
            for name in folders:
                (root / name).mkdir(parents=True)
            for name, text in files.items():
                (root / name).parent.mkdir(parents=True, exist_ok=True)
                (root / name).write_text(text)
            done = subprocess.run([SOURCES / "tests" / "check_rooms", folder], capture_output=True, text=True)
            return done.returncode, done.stdout + done.stderr

    def test_an_include_of_a_lower_room_or_its_own_passes(self):
        files = {"low/a.h": "", "low/inner/b.h": '#include "low/a.h"\n',
                 "high/c.cpp": '#include "low/inner/b.h"\n#include "d.h"\n#include <vector>\n', "high/d.h": ""}
        self.assertEqual(self.check(files), (0, ""))

    def test_an_include_of_a_higher_room_is_named(self):
        files = {"low/a.h": '#include "high/c.h"\n', "high/c.h": ""}
        self.assertEqual(self.check(files),
                         (1, "low/a.h: includes high/c.h, but low is earlier in the list than high\n"))

    def test_an_include_in_angle_brackets_counts(self):
        files = {"low/a.h": "#include <high/c.h>\n", "high/c.h": "", "low/vector": "", "low/b.h": "#include <vector>\n"}
        self.assertEqual(self.check(files),
                         (1, "low/a.h: includes high/c.h, but low is earlier in the list than high\n"))

    def check_engine(self, files):
        rooms = ("rdl/values", "rdl/api", "rdl/engine", "platform/reports", "platform/contracts", "app", "tools", "tools/inner")
        headers = {"rdl/values/value.h": "", "rdl/api/report.h": '#include "rdl/values/value.h"\n',
                   "rdl/engine/run.h": '#include "rdl/api/report.h"\n'}
        return self.check({**headers, **files}, "\n".join(rooms) + "\n", rooms)

    def test_programs_include_the_interface_of_the_engine_and_nothing_else(self):
        self.assertEqual(self.check_engine({"app/a.cpp": '#include "rdl/api/report.h"\n'}), (0, ""))
        for name in ("rdl/values/value.h", "rdl/engine/run.h"):
            self.assertEqual(self.check_engine({"app/a.cpp": f"#include <{name}>\n"}),
                             (1, f"app/a.cpp: includes {name}, which is no interface of the engine\n"))

    def test_adapters_and_tools_include_the_values_of_the_engine_too(self):
        for folder in ("platform/reports", "platform/contracts", "tools", "tools/inner"):
            include = f"{folder}/a.cpp", '#include "rdl/values/value.h"\n'
            self.assertEqual(self.check_engine(dict([include])), (0, ""))
            self.assertEqual(self.check_engine({f"{folder}/a.cpp": '#include "rdl/engine/run.h"\n'})[0], 1)

    def test_a_folder_that_is_not_listed_is_named(self):
        # Inside a room, too: its includes of that room and those of the room of it could be a circle.
        for folder in ("lost", "low/deep"):
            files = {"low/a.h": f'#include "{folder}/b.h"\n', f"{folder}/b.h": '#include "low/a.h"\n'}
            self.assertEqual(self.check(files), (1, f"{folder}: is not listed in rooms.txt\n"))

    def test_a_folder_of_more_than_25_modules_is_named(self):
        files = {f"high/m{n}.{kind}": "" for n in range(25) for kind in ("h", "cpp")}
        self.assertEqual(self.check(files), (0, ""))
        files["high/one_more.h"] = ""
        self.assertEqual(self.check(files), (1, "high: 26 modules, at most 25\n"))

    def test_a_listed_room_without_a_folder_ends_the_check(self):
        code, said = self.check({}, rooms="low\ngone\n")
        self.assertEqual((code, said), (1, "rooms.txt: there is no folder gone\n"))

    def test_the_sources_of_the_programs_pass(self):
        done = subprocess.run([SOURCES / "tests" / "check_rooms"], capture_output=True, text=True)
        self.assertEqual((done.returncode, done.stdout), (0, ""))


if __name__ == "__main__":
    unittest.main()
