# SPDX-License-Identifier: GPL-3.0-or-later
"""The programs as they are shipped are hardened: addresses, jumps, stack and the C library's writing functions."""

import os
import pathlib
import subprocess
import unittest

STAGE = pathlib.Path(os.environ["OXC_STAGE"])
LIST = pathlib.Path(os.environ["OXC_SOURCES"]) / "packaging" / "programs.txt"
PROGRAMS = [line for line in LIST.read_text().splitlines() if not line.startswith("#")]


def told(*command):
    environment = {**os.environ, "LC_ALL": "C"}
    return subprocess.run(command, capture_output=True, text=True, check=True, env=environment).stdout


# Of the functions that the program has from libraries.
def symbols(program):
    return {line.split()[7].partition("@")[0]
            for line in told("readelf", "--dyn-syms", "-W", STAGE / program).splitlines()
            if " UND " in line and len(line.split()) > 7 and line.split()[3] == "FUNC"}


class Hardening(unittest.TestCase):
    def test_loads_at_any_address(self):
        for program in PROGRAMS:
            self.assertRegex(told("readelf", "-hW", STAGE / program), r"Type:\s+DYN \(Position-Independent Executable")

    def test_tables_of_addresses_are_read_only_from_the_start(self):
        for program in PROGRAMS:
            self.assertIn("GNU_RELRO", told("readelf", "-lW", STAGE / program))
            flags = [line.split(maxsplit=2)[2] for line in told("readelf", "-dW", STAGE / program).splitlines()
                     if "(FLAGS" in line]
            self.assertEqual(flags, ["BIND_NOW", "Flags: NOW PIE"], program)

    def test_stack_is_no_program(self):
        for program in PROGRAMS:
            stack = [line for line in told("readelf", "-lW", STAGE / program).splitlines() if "GNU_STACK" in line]
            self.assertEqual(len(stack), 1)
            self.assertRegex(stack[0], r"\bRW\s")

    def test_returns_and_writes_are_checked(self):
        for program in PROGRAMS:
            names = symbols(program)
            self.assertTrue("__stack_chk_fail" in names, program)
            self.assertTrue(any(name.endswith("_chk") for name in names), program)

    def test_containers_check_their_bounds(self):
        for program in PROGRAMS:
            self.assertTrue(any("__glibcxx_assert_fail" in name for name in symbols(program)), program)

    @unittest.skipUnless(os.uname().machine == "x86_64", "a matter of this processor's instructions")
    def test_jumps_end_at_marked_places(self):
        for program in PROGRAMS:
            listing = told("objdump", "-d", "-j", ".text", "--no-show-raw-insn", STAGE / program)
            self.assertGreater(listing.count("endbr64"), 500, program)


if __name__ == "__main__":
    unittest.main()
