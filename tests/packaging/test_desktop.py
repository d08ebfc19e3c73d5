# SPDX-License-Identifier: GPL-3.0-or-later
"""What the desktop reads: entry, metadata, kinds of files and icons, as its own programs judge them."""

import os
import pathlib
import re
import shutil
import struct
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
import zlib

from usage import BUILD, TOP, WITH_USAGE

DESKTOP = TOP / "packaging" / "desktop"
APPLICATION = "org.oxbowcourier.oxc"
MIME = "{http://www.freedesktop.org/standards/shared-mime-info}"


def told(*command, **variables):
    result = subprocess.run(command, capture_output=True, text=True, env={**os.environ, **variables})
    return result.returncode, result.stdout + result.stderr


def picture_data(png):
    """The bytes of a PNG file's picture, before they are compressed."""
    place, data = 8, b""
    while place < len(png):
        size, kind = struct.unpack(">I4s", png[place:place + 8])
        data += png[place + 8:place + 8 + size] if kind == b"IDAT" else b""
        place += size + 12
    return zlib.decompress(data)


class Desktop(unittest.TestCase):
    def test_the_entries_are_valid(self):
        entries = sorted(DESKTOP.glob("*.desktop"))
        self.assertEqual([entry.stem for entry in entries], ["org.oxbowcourier.design", APPLICATION])
        for entry in entries:
            self.assertEqual(told("desktop-file-validate", entry), (0, ""))

    def test_report_files_are_opened_by_the_designer(self):
        lines = (DESKTOP / "org.oxbowcourier.design.desktop").read_text().splitlines()
        self.assertIn("Exec=oxc-design %F", lines)
        self.assertIn("MimeType=application/x-rdl+xml;", lines)

    def test_the_entry_starts_the_editor(self):
        lines = (DESKTOP / (APPLICATION + ".desktop")).read_text().splitlines()
        # An argument, the name of a file too, would start a scheduler.
        self.assertIn("Exec=oxc", lines)
        self.assertEqual([line for line in lines if line.startswith("MimeType=")], [])

    def test_the_metadata_are_valid(self):
        metadata = DESKTOP / (APPLICATION + ".metainfo.xml")
        code, said = told("appstreamcli", "validate", "--no-net", "--no-color", metadata)
        self.assertEqual(code, 0, said)
        self.assertEqual(re.findall(r"^[EWI]:.*", said, re.MULTILINE), [])

    def test_the_metadata_name_entry_version_and_programs(self):
        root = ElementTree.parse(DESKTOP / (APPLICATION + ".metainfo.xml")).getroot()
        self.assertEqual(root.findtext("id"), APPLICATION)
        self.assertEqual(root.findtext("launchable"), APPLICATION + ".desktop")
        programs = {path.name for path in (BUILD / "stage").glob("oxc*") if "." not in path.name}
        self.assertEqual({binary.text for binary in root.iter("binary")}, programs)
        version = told(BUILD / "stage" / WITH_USAGE[0], "--version")[1].split()[1]
        self.assertEqual(root.find("releases")[0].get("version"), version)


class KindsOfFiles(unittest.TestCase):
    def test_the_kind_of_report_files_is_well_formed(self):
        self.assertEqual(told("xmllint", "--noout", DESKTOP / "oxbow-courier.xml"), (0, ""))

    def test_the_database_of_kinds_takes_it(self):
        with tempfile.TemporaryDirectory() as folder:
            mime = pathlib.Path(folder, "mime")
            (mime / "packages").mkdir(parents=True)
            shutil.copy(DESKTOP / "oxbow-courier.xml", mime / "packages")
            self.assertEqual(told("update-mime-database", mime, XDG_DATA_HOME=folder), (0, ""))
            self.assertEqual(
                sorted(line for line in (mime / "globs2").read_text().splitlines() if not line.startswith("#")),
                ["40:application/x-rdl+xml:*.rpt", "50:application/x-rdl+xml:*.rdl"])
            self.assertEqual((mime / "subclasses").read_text(), "application/x-rdl+xml application/xml\n")

    def test_every_schema_of_the_guide_is_known(self):
        root = ElementTree.parse(DESKTOP / "oxbow-courier.xml").getroot()
        named = [re.search(r"20\d\d/\d\d", entry.get("namespaceURI")).group()
                 for entry in root.iter(MIME + "root-XML")]
        guide = (TOP / "docs" / "report-files.md").read_text().split("\n\n")[1]
        self.assertEqual(named, re.findall(r"20\d\d/\d\d", guide))


class Icons(unittest.TestCase):
    def test_icons_have_the_size_of_their_folder_and_a_drawing(self):
        sizes = []
        for path in (BUILD / "packaging" / "icons").glob("*/oxbow-courier.png"):
            data = path.read_bytes()
            self.assertEqual(data[:8], b"\x89PNG\r\n\x1a\n")
            width, height = struct.unpack(">II", data[16:24])
            self.assertEqual(path.parent.name, f"{width}x{height}")
            self.assertGreater(len(set(picture_data(data))), 16, path)
            sizes.append(width)
        self.assertEqual(sorted(sizes), [16, 22, 24, 32, 48, 64, 128, 256])


if __name__ == "__main__":
    unittest.main()
