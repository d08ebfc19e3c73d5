# SPDX-License-Identifier: GPL-3.0-or-later
"""PDF for archives and with the logical structure, of all samples and forty kinds of reports: held against the clauses of
ISO 19005-2 and of ISO 32000-1, 14.7 and 14.8, and read by other people's programs."""

import json
import pathlib
import re
import struct
import subprocess
import sys
import tempfile
import unittest
from xml.etree import ElementTree

from harness import STAGE

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "reports"))
from make_reports import write_all  # noqa: E402

SAMPLES = ("invoice", "order_list", "sales_by_region", "sales_charts", "summary", "targets")
SPACES = {"rdf": "http://www.w3.org/1999/02/22-rdf-syntax-ns#", "dc": "http://purl.org/dc/elements/1.1/",
          "xmp": "http://ns.adobe.com/xap/1.0/", "pdf": "http://ns.adobe.com/pdf/1.3/",
          "pdfaid": "http://www.aiim.org/pdfa/ns/id/"}
PAINTS = {b"Tj", b"TJ", b"f", b"S", b"B", b"Do"}


def run(*words):
    return subprocess.run([str(word) for word in words], capture_output=True)


class Pdf:
    """The objects of a document, as qpdf reads them."""

    def __init__(self, path):
        self.path = path
        self.bytes = path.read_bytes()
        said = json.loads(run("qpdf", "--json", "--json-key=qpdf", "--json-stream-data=none", path).stdout)
        self.objects = {name.removeprefix("obj:"): value for name, value in said["qpdf"][1].items()}
        self.trailer = self.objects.pop("trailer")["value"]
        self.root = self.at(self.trailer["/Root"])
        self.pages = [name for name, value in self.objects.items() if self.dictionary(value).get("/Type") == "/Page"]

    @staticmethod
    def dictionary(entry):
        value = entry["stream"]["dict"] if "stream" in entry else entry["value"]
        return value if isinstance(value, dict) else {}

    def at(self, value):
        """What a reference leads to; other values as they are."""
        if not isinstance(value, str) or not re.fullmatch(r"\d+ \d+ R", value):
            return value
        entry = self.objects[value]
        return entry["stream"]["dict"] if "stream" in entry else entry["value"]

    def stream(self, reference):
        return run("qpdf", "--show-object=" + reference.split()[0], "--filtered-stream-data", self.path).stdout

    def everything(self):
        return [self.dictionary(entry) for entry in self.objects.values()]


def marked(content):
    """The marked-content identifiers of a content stream and the painting operators outside of any sequence."""
    depth, marks, stray = 0, [], []
    tokens = re.finditer(rb"\((?:\\.|[^\\()])*\)|<[0-9A-Fa-f]*>|<<|>>|/[^\s/\[\]()<>]+|[^\s/\[\]()<>]+", content, re.S)
    words = []
    for token in tokens:
        word = token.group()
        if word in (b"BMC", b"BDC"):
            if b"/MCID" in words[-6:]:
                marks.append(int(words[len(words) - 1 - words[::-1].index(b"/MCID") + 1]))
            depth += 1
        elif word == b"EMC":
            depth -= 1
        elif word in PAINTS and depth == 0:
            stray.append(word)
        words = words[-8:] + [word]
    return depth, marks, stray


class Archives(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.keeper = tempfile.TemporaryDirectory(prefix="oxc-archives-")
        cls.folder = pathlib.Path(cls.keeper.name)
        write_all(cls.folder)
        cls.reports = {file.stem: file for file in cls.folder.glob("*.rdl") if file.stem != "statement_line"}  # shown by another
        cls.reports |= {sample: STAGE / "samples" / (sample + ".rpt") for sample in SAMPLES}
        cls.documents = {}
        for name, report in sorted(cls.reports.items()):
            for kind, options in (("plain", ()), ("archive", ("--pdf-a", "--tagged"))):
                out = cls.folder / f"{name}.{kind}.pdf"
                done = run(STAGE / "oxc-report", "export", report, "-f", "pdf", "-o", out, *options)
                assert done.returncode == 0, done.stderr
            cls.documents[name] = Pdf(cls.folder / f"{name}.archive.pdf")

    @classmethod
    def tearDownClass(cls):
        cls.keeper.cleanup()

    def each(self, check):
        for name, document in self.documents.items():
            with self.subTest(name):
                check(document)

    def test_readers_take_them_without_a_complaint(self):
        def check(pdf):
            checked = run("qpdf", "--check", pdf.path)
            self.assertEqual(checked.returncode, 0, checked.stdout + checked.stderr)
            self.assertNotIn(b"WARNING", checked.stdout + checked.stderr)
            facts = run("pdfinfo", pdf.path)
            self.assertEqual(facts.stderr, b"")
            self.assertRegex(facts.stdout, rb"Tagged: +yes")
            self.assertRegex(facts.stdout, rb"Encrypted: +no")
            self.assertRegex(facts.stdout, rb"JavaScript: +no")
        self.each(check)

    def test_pages_look_like_those_without(self):
        for name in self.documents:
            with self.subTest(name):
                pages = [run("pdftoppm", "-r", "50", "-l", "6", self.folder / f"{name}.{kind}.pdf").stdout
                         for kind in ("plain", "archive")]
                self.assertGreater(len(pages[0]), 1000)
                self.assertTrue(pages[0] == pages[1])

    def test_6_1_2_and_6_1_3_header_and_trailer(self):
        def check(pdf):
            first, second = pdf.bytes.split(b"\n", 2)[:2]
            self.assertEqual(first, b"%PDF-1.7")
            self.assertTrue(second[:1] == b"%" and len(second) >= 5 and all(byte > 127 for byte in second[1:5]))
            self.assertTrue(pdf.bytes.endswith(b"%%EOF\n"))
            self.assertEqual(len(pdf.trailer["/ID"]), 2)
            self.assertNotIn("/Encrypt", pdf.trailer)
        self.each(check)

    def test_6_1_7_streams_are_deflated_and_in_the_file(self):
        def check(pdf):
            for entry in pdf.objects.values():
                if "stream" in entry:
                    self.assertIn(entry["stream"]["dict"].get("/Filter"), (None, "/FlateDecode", "/DCTDecode"))
                    self.assertFalse({"/F", "/FFilter", "/FDecodeParms"} & entry["stream"]["dict"].keys())
        self.each(check)

    def test_6_1_13_limits(self):
        def check(pdf):
            self.assertLess(len(pdf.objects), 8388607)
            for page in pdf.pages:
                self.assertTrue(all(edge == 0 or 3 <= edge <= 14400 for edge in pdf.at(page)["/MediaBox"]))
            for value in self.values(pdf.everything()):
                if isinstance(value, str):
                    self.assertLessEqual(len(value), 32767)
        self.each(check)

    def values(self, value):
        if isinstance(value, dict):
            for one in value.values():
                yield from self.values(one)
        elif isinstance(value, list):
            for one in value:
                yield from self.values(one)
        else:
            yield value

    def test_6_2_3_output_intent_is_srgb(self):
        def check(pdf):
            [intent] = pdf.root["/OutputIntents"]
            intent = pdf.at(intent)
            self.assertEqual(intent["/S"], "/GTS_PDFA1")
            self.assertEqual(intent["/OutputConditionIdentifier"], "u:sRGB IEC61966-2.1")
            self.assertEqual(pdf.at(intent["/DestOutputProfile"])["/N"], 3)
            profile = pdf.stream(intent["/DestOutputProfile"])
            size, = struct.unpack(">I", profile[:4])
            self.assertEqual((size, size % 4), (len(profile), 0))
            self.assertEqual(profile[8:24], b"\x04\x20\0\0mntrRGB XYZ ")
            self.assertEqual(profile[36:40], b"acsp")
            count, = struct.unpack(">I", profile[128:132])
            tags = {}
            for i in range(count):
                name, at, length = struct.unpack(">4sII", profile[132 + 12 * i:144 + 12 * i])
                self.assertLessEqual(at + length, size)
                tags[name] = profile[at:at + length]
            self.assertEqual(set(tags), {b"desc", b"cprt", b"wtpt", b"chad", b"rXYZ", b"gXYZ", b"bXYZ", b"rTRC", b"gTRC", b"bTRC"})
            sums = [sum(struct.unpack(">i", tags[colour][8 + 4 * axis:12 + 4 * axis])[0] / 65536 for colour in (b"rXYZ", b"gXYZ", b"bXYZ"))
                    for axis in range(3)]
            for got, want in zip(sums, (0.9642, 1.0, 0.8249)):  # red, green and blue make white, D50
                self.assertAlmostEqual(got, want, 3)
        check(self.documents["summary"])
        self.each(lambda pdf: self.assertEqual(len(pdf.root["/OutputIntents"]), 1))

    def test_6_2_colours_images_and_states(self):
        def check(pdf):
            for value in pdf.everything():
                self.assertNotEqual(value.get("/ColorSpace"), "/DeviceCMYK")
                self.assertFalse(value.get("/Interpolate", False))
                self.assertFalse({"/Alternates", "/OPI", "/PS", "/TR", "/HTP"} & value.keys())
        self.each(check)

    def test_6_2_11_fonts_are_embedded_with_their_widths(self):
        def check(pdf):
            fonts = run("pdffonts", pdf.path).stdout.decode().splitlines()[2:]
            for font in fonts:
                self.assertRegex(font, r"^[A-Z]{6}\+.* yes yes yes ")
            for value in pdf.everything():
                if value.get("/Subtype") == "/CIDFontType2":
                    self.assertEqual(value["/CIDToGIDMap"], "/Identity")
                    advances = self.advances(pdf.stream(pdf.at(value["/FontDescriptor"])["/FontFile2"]))
                    widths = value["/W"]
                    for first, run_of in zip(widths[::2], widths[1::2]):
                        for glyph, width in enumerate(run_of, first):
                            self.assertAlmostEqual(width, advances[glyph], delta=1)
                if value.get("/Type") == "/FontDescriptor":
                    self.assertNotIn("/CIDSet", value)
        self.each(check)

    def advances(self, font):
        """The widths of a TrueType font's glyphs, in thousandths of its size."""
        count, = struct.unpack(">H", font[4:6])
        tables = {}
        for i in range(count):
            name, _, at, length = struct.unpack(">4sIII", font[12 + 16 * i:28 + 16 * i])
            tables[name] = font[at:at + length]
        em, = struct.unpack(">H", tables[b"head"][18:20])
        metrics, = struct.unpack(">H", tables[b"hhea"][34:36])
        glyphs, = struct.unpack(">H", tables[b"maxp"][4:6])
        widths = [struct.unpack(">H", tables[b"hmtx"][4 * i:4 * i + 2])[0] * 1000 / em for i in range(metrics)]
        return widths + widths[-1:] * (glyphs - metrics)

    def test_6_3_and_6_5_annotations_and_actions(self):
        def check(pdf):
            for value in pdf.everything():
                if value.get("/Type") == "/Annot":
                    self.assertEqual((value["/Subtype"], value["/F"]), ("/Link", 4))
                    if "/A" in value:
                        self.assertEqual(pdf.at(value["/A"])["/S"], "/URI")
                self.assertFalse({"/AA", "/OpenAction", "/JS", "/EmbeddedFiles", "/OCProperties", "/AcroForm"} & value.keys())
        self.each(check)

    def test_6_6_metadata_says_what_the_information_says(self):
        def check(pdf):
            entry = pdf.at(pdf.root["/Metadata"])
            self.assertEqual((entry["/Type"], entry["/Subtype"], entry.get("/Filter")), ("/Metadata", "/XML", None))
            packet = pdf.stream(pdf.root["/Metadata"])
            self.assertTrue(packet.startswith(b'<?xpacket begin="\xef\xbb\xbf" id="W5M0MpCehiHzreSzNTczkc9d"?>'))
            self.assertIn(packet, pdf.bytes)
            tree = ElementTree.fromstring(packet)

            def say(path):
                found = tree.find(".//" + path, SPACES)
                return None if found is None else found.text

            self.assertEqual((say("pdfaid:part"), say("pdfaid:conformance")), ("2", "B"))
            info = pdf.at(pdf.trailer["/Info"])
            for key, path in (("/Title", "dc:title/rdf:Alt/rdf:li"), ("/Author", "dc:creator/rdf:Seq/rdf:li"),
                              ("/Subject", "dc:description/rdf:Alt/rdf:li"), ("/Producer", "pdf:Producer")):
                self.assertEqual(say(path), info[key].removeprefix("u:") if key in info else None)
            for key, path in (("/CreationDate", "xmp:CreateDate"), ("/ModDate", "xmp:ModifyDate")):
                self.assertEqual("u:D:" + re.sub(r"[-:T]", "", say(path)), info[key])
        self.each(check)

    def test_14_6_all_content_is_marked(self):
        def check(pdf):
            for page in pdf.pages:
                marks = []
                for stream in pdf.at(page)["/Contents"]:
                    depth, found, stray = marked(pdf.stream(stream))
                    self.assertEqual((depth, stray), (0, []))
                    marks += found
                self.assertEqual(marks, list(range(len(marks))))
        for name in ("packing_list_map", "spans_over_pages", "wide_table_pages", "form_over_background", "dashboard",
                     "images_three_sizings", "letter_with_markup", "rotated_headings", "columns_with_groups", "summary"):
            with self.subTest(name):
                check(self.documents[name])

    def elements(self, pdf, reference, parent):
        """Each element with its reference and its kids, in reading order."""
        element = pdf.at(reference)
        self.assertEqual(element["/P"], parent)
        kids = element.get("/K", [])
        yield reference, element, kids
        for kid in kids:
            if isinstance(kid, str) and "/S" in pdf.at(kid):
                yield from self.elements(pdf, kid, reference)

    def test_14_7_structure_and_pages_lead_to_each_other(self):
        def check(pdf):
            tree = pdf.at(pdf.root["/StructTreeRoot"])
            self.assertEqual(pdf.root["/MarkInfo"], {"/Marked": True})
            numbers = pdf.at(tree["/ParentTree"])["/Nums"]
            parents = {key: pdf.at(value) if isinstance(pdf.at(value), list) else value
                       for key, value in zip(numbers[::2], numbers[1::2])}
            [document] = tree["/K"]
            self.assertEqual(pdf.at(document)["/S"], "/Document")
            pages = {page: pdf.at(page)["/StructParents"] for page in pdf.pages}
            seen, annotations = {key: {} for key in pages.values()}, 0
            for reference, element, kids in self.elements(pdf, document, pdf.root["/StructTreeRoot"]):
                for kid in kids:
                    if isinstance(kid, int):
                        seen[pages[element["/Pg"]]][kid] = reference
                    elif isinstance(kid, dict) and kid["/Type"] == "/MCR":
                        seen[pages[kid["/Pg"]]][kid["/MCID"]] = reference
                    elif isinstance(kid, dict):
                        annotations += 1
                        self.assertEqual(element["/S"], "/Link")
                        annotation = pdf.at(kid["/Obj"])
                        self.assertEqual(parents[annotation["/StructParent"]], reference)
                        self.assertIn(kid["/Obj"], pdf.at(kid["/Pg"])["/Annots"])
            for key, marks in seen.items():
                self.assertEqual([marks[mark] for mark in sorted(marks)], parents[key])
            self.assertEqual(annotations, sum(len(pdf.at(page).get("/Annots", [])) for page in pdf.pages))
            self.assertEqual(len(parents), len(pages) + annotations)
        self.each(check)

    def test_14_8_tables_are_rows_of_cells(self):
        allowed = {"/THead": {"/TR"}, "/TBody": {"/TR"}, "/TR": {"/TH", "/TD"}}

        def check(pdf):
            root = pdf.root["/StructTreeRoot"]
            for _, element, kids in self.elements(pdf, pdf.at(root)["/K"][0], root):
                types = {pdf.at(kid)["/S"] for kid in kids if isinstance(kid, str)}
                if element["/S"] == "/Table":  # rows, or a head of rows and a body
                    self.assertIn(types, (set(), {"/TR"}, {"/THead"}, {"/THead", "/TBody"}))
                elif element["/S"] in allowed:
                    self.assertLessEqual(types, allowed[element["/S"]])
                else:
                    self.assertFalse(types & {"/TR", "/TH", "/TD", "/THead", "/TBody"})
                if element["/S"] == "/Figure":
                    self.assertTrue(element["/Alt"].removeprefix("u:"))
                if element["/S"] == "/TH":
                    self.assertIn(pdf.at(element["/A"])["/Scope"], ("/Column", "/Row"))
        self.each(check)

    def test_a_table_over_pages_is_one_and_its_heading_is_read_once(self):
        pdf = self.documents["order_list"]
        self.assertGreater(len(pdf.pages), 3)
        root = pdf.root["/StructTreeRoot"]
        elements = list(self.elements(pdf, pdf.at(root)["/K"][0], root))
        self.assertEqual(sum(element["/S"] == "/Table" for _, element, _ in elements), 1)
        self.assertEqual(sum(element["/S"] == "/TH" for _, element, _ in elements), 6)

    def test_another_reader_sees_headings_links_and_cells(self):
        # Of a short document: poppler draws a page again for each of its texts.
        text = run("pdfinfo", "-struct-text", self.documents["packing_list_map"].path).stdout.decode()
        self.assertRegex(re.sub(r"\s+", " ", text),
                         r'^Document P \(block\) Link \(inline\) "Go to box 3" Object \d+ 0 Table \(block\) '
                         r'TR TD: /ColSpan 3 H1 \(block\) "Box 1" TR TD H2 \(block\) "Article 11" TD "1" TD "0.50" ')


if __name__ == "__main__":
    unittest.main()
