"""The page and the pictures: complete in themselves, true to the figures, safe against what files say."""

import html.parser
import json
import math
import os
import re
import resource
import signal
import subprocess
import unittest
import xml.etree.ElementTree

import rig
from rig import position, program, record, result

EVIL = "<SCRIPT>&LT;'\"</B>"
VOID = {"meta", "link", "br", "img"}
COMMANDS = ("summary", "coverage", "range", "signal", "stations", "ships", "reports")


class Page(html.parser.HTMLParser):
    """Reads a page strictly: every element closed in its turn, every id given once."""

    def __init__(self, text):
        super().__init__()
        self.open, self.ids, self.links, self.names = [], [], [], []
        self.tables, self.headings, self.styles, self.svg, self.notes = [], [], "", 0, []
        self.feed(text)
        self.close()
        assert not self.open, self.open

    def handle_starttag(self, tag, attributes):
        self.names.append(tag)
        for name, value in attributes:
            if name == "id":
                assert value not in self.ids, value
                self.ids.append(value)
            if name in ("src", "href", "xlink:href", "action", "data"):
                self.links.append(value)
            assert not name.startswith("on"), name
        if tag == "table":
            self.tables.append([])
        if tag == "tr":
            self.tables[-1].append([])
        if tag in ("td", "th"):
            self.tables[-1][-1].append("")
        if tag == "h3":
            self.headings.append("")
        if tag == "li":
            self.notes.append("")
        if tag not in VOID:
            self.open.append(tag)

    def handle_startendtag(self, tag, attributes):
        self.handle_starttag(tag, attributes)
        if tag not in VOID:
            self.handle_endtag(tag)

    def handle_endtag(self, tag):
        assert self.open and self.open[-1] == tag, (tag, self.open)
        self.open.pop()

    def handle_data(self, text):
        if "style" in self.open:
            self.styles += text
        elif self.open and self.open[-1] in ("td", "th"):
            self.tables[-1][-1][-1] += text
        elif self.open and self.open[-1] == "h3":
            self.headings[-1] += text
        elif self.open and self.open[-1] == "li":
            self.notes[-1] += text


def figures(value):
    """Every number and text of a JSON value, as a cell of the page shows them."""
    if isinstance(value, dict):
        return [f for v in value.values() for f in figures(v)]
    if isinstance(value, list):
        return [f for v in value for f in figures(v)]
    return [value]


class Pixels:
    """A PNG as rows of red, green, blue."""

    def __init__(self, path):
        done = subprocess.run(["convert", str(path), "-depth", "8", "ppm:-"], capture_output=True, check=True)
        magic, self.width, self.height, _, self.data = re.match(rb"(P6)\s(\d+)\s(\d+)\s(\d+)\s(.*)", done.stdout,
                                                               re.DOTALL).groups()
        assert magic == b"P6"
        self.width, self.height = int(self.width), int(self.height)

    def found(self, colour):
        """The places of a colour."""
        step = bytes(colour)
        return [(i // 3 % self.width, i // 3 // self.width) for i in
                (m.start() for m in re.finditer(re.escape(step), self.data)) if i % 3 == 0]


class PageTest(rig.Case):
    def page(self, *words):
        """The page of a command, and its text; the result on standard output is what it is without a page."""
        path = self.folder / "page.html"
        done = program(*words, "--json", "--html", path, cwd=self.folder)
        self.assertEqual(done, program(*words, "--json"))
        self.told = json.loads(done[1])
        text = path.read_text(encoding="utf-8")
        return Page(text), text

    def test_complete_in_itself(self):
        for command in COMMANDS:
            with self.subTest(command):
                page, text = self.page(command, self.sample("harbour.txt"))
                self.assertEqual([link for link in page.links if not link.startswith("#")], [])
                self.assertEqual([link for link in page.links if link[1:] not in page.ids], [])
                self.assertEqual([n for n in page.names if n in ("script", "link", "img", "iframe", "object")], [])
                self.assertNotIn("url(", page.styles)
                self.assertNotIn("@import", page.styles)
                outside = set(re.findall(r"https?://[^\s\"'<>]*", text))
                self.assertLessEqual(outside, {"http://www.w3.org/2000/svg", "http://www.w3.org/1999/xlink"})
                self.assertIn("prefers-color-scheme: dark", page.styles)
                self.assertIn("@media print", page.styles)
                for svg in re.findall(r"<svg.*?</svg>", text, re.DOTALL):
                    xml.etree.ElementTree.fromstring(svg)
                drawn = {"summary": 7, "coverage": 1, "range": 1, "signal": 4, "stations": 1}.get(command, 0)
                self.assertEqual(page.names.count("svg"), drawn)
                self.assertEqual(text.count("n = "), drawn)

    def test_figures_are_those_of_json(self):
        for command in COMMANDS:
            with self.subTest(command):
                page, _ = self.page(command, self.sample("night.txt"))
                self.same_figures(page, self.told)

    def same_figures(self, page, told):
        """The tables are those of the JSON, in its order."""
        self.assertEqual([n for n in told.pop("notes") if n not in page.notes], [])
        told.pop("command")
        for value in told.values():
            table = page.tables.pop(0)
            if isinstance(value, list):
                shown = [cell for row in table[1:] for cell in row]
            else:
                shown = [row[1] for row in table]
            expected = figures(value)
            self.assertEqual(len(shown), len(expected))
            for cell, figure in zip(shown, expected):
                if figure is None:
                    self.assertIn(cell, ("\u2013", "not known"))
                elif isinstance(figure, str):
                    self.assertTrue(f"{cell} ".startswith(f"{figure} "), (cell, figure))
                else:
                    self.assertEqual(float(cell.split()[0]), figure)

    def test_the_page_of_a_comparison(self):
        """Every third line left out of B: the verdict first, then the pictures by the files' names, then the tables."""
        whole = self.sample("night.txt").read_bytes().splitlines(keepends=True)
        mast = self.file("mast <1>.txt", b"".join(whole))
        roof = self.file("roof.txt", b"".join(line for i, line in enumerate(whole) if i % 3))
        page, text = self.page("compare", mast, roof)
        verdict = self.told.pop("verdict")["text"]
        self.assertIn("A heard", verdict)
        self.assertLess(text.index(f"<p>{verdict}</p>"), text.index("<svg"))
        self.assertLess(text.index("<svg"), text.index("<table"))
        self.assertEqual(page.names.count("svg"), 3)
        svg = xml.etree.ElementTree.fromstring(re.search(r"<svg.*?</svg>", text, re.DOTALL).group())
        texts = ["".join(t.itertext()).strip() for t in svg.iter("{http://www.w3.org/2000/svg}text")]
        self.assertIn("A: mast <1>.txt", texts)
        self.assertIn("B: roof.txt", texts)
        self.same_figures(page, self.told)

    def test_summary_has_what_the_parts_have(self):
        page, _ = self.page("summary", self.sample("harbour.txt"))
        for command in ("coverage", "range", "signal"):
            part, _ = self.page(command, self.sample("harbour.txt"))
            for table in part.tables:
                self.assertIn(table, page.tables)

    def test_what_files_say_stays_text(self):
        static = rig.Bits(24, 211000001).add(0, 2).text(EVIL, 20).sentence()
        path = self.file("<img src=x onerror=alert(1)>'`touch x`$(y)\n\"&\udcff.txt",
                         record(("08:00:00", rig.gps()), ("08:00:01", static),
                                ("08:00:02", position(211000001, 50.1, 1.1)), ("08:00:03", rig.levels(30, 18))))
        for command in COMMANDS:
            page, text = self.page(command, path, self.sample("night.txt"))
            self.assertNotIn("<img", text)
            self.assertNotIn("<SCRIPT", text)
            self.assertNotIn("script", page.names)
            if command == "ships":
                self.assertTrue(any(EVIL in cell for row in page.tables[0] for cell in row))
        code, _, err = program("coverage", path, self.sample("night.txt"), "--svg", self.folder / "p", cwd=self.folder)
        self.assertEqual(code, 0, err)
        legend = xml.etree.ElementTree.parse(self.folder / "p" / "coverage.svg").getroot()
        texts = ["".join(t.itertext()) for t in legend.iter("{http://www.w3.org/2000/svg}text")]
        self.assertTrue(any("<img src=x onerror=alert(1)>'`touch x`$(y)\ufffd\"&\ufffd.txt" in t for t in texts), texts)
        self.assertFalse((self.folder / "x").exists())

    def test_pictures(self):
        for kind in ("svg", "png"):
            folder = self.folder / kind
            code, _, err = program("summary", self.sample("harbour.txt"), "--" + kind, folder)
            self.assertEqual((code, err), (0, ""))
            names = sorted(p.name for p in folder.iterdir())
            self.assertEqual(names, [n + "." + kind for n in ("coverage", "levels-range", "levels-time", "messages",
                                                              "rate", "snr-range", "snr-time")])
        rules = {"coverage": "true bearing", "rate": "95 % interval", "messages": "of the clock"}
        for path in (self.folder / "svg").iterdir():
            root = xml.etree.ElementTree.parse(path).getroot()
            text = " ".join("".join(t.itertext()) for t in root.iter("{http://www.w3.org/2000/svg}text"))
            self.assertRegex(text, r"n = [1-9]\d* ")
            self.assertIn(rules.get(path.stem, "Medians of the reports"), text)

    def test_the_rose_reaches_as_far_as_the_reports(self):
        """Ships at 20 miles, from 90 to 120 degrees at 8: along a ray the outermost drawn pixel is that far."""
        lines = [("08:00:00", rig.gps((0, 0), (0, 0)))]
        for i in range(360):
            miles = 8 if 90 <= i < 120 else 20
            angle = math.radians(i + 0.5)
            place = miles / 60 * math.cos(angle), miles / 60 * math.sin(angle)
            lines.append((f"08:{i // 60:02d}:{i % 60:02d}", position(211000000 + i, *place)))
        code, _, err = program("coverage", self.file("a.txt", record(*lines)), "--png", self.folder)
        self.assertEqual((code, err), (0, ""))
        pixels = Pixels(self.folder / "coverage.png")
        colours = (0x2f, 0x7f, 0xc1), (0xd5, 0x5e, 0x00), (0x0e, 0x9a, 0x6e)  # of the outlines, which cover each other
        drawn = [(x, y) for colour in colours for x, y in pixels.found(colour) if y > 110]  # below the legend
        left, right = min(x for x, _ in drawn), max(x for x, _ in drawn)
        top, bottom = min(y for _, y in drawn), max(y for _, y in drawn)
        centre, radius = ((left + right) / 2, (top + bottom) / 2), (bottom - top) / 2
        self.assertAlmostEqual(right - left, bottom - top, delta=6)

        def reach(bearing):
            spots = [math.hypot(x - centre[0], y - centre[1]) for x, y in drawn
                     if abs((math.degrees(math.atan2(x - centre[0], centre[1] - y)) - bearing + 180) % 360 - 180) < 2]
            return max(spots) / radius * 20
        for bearing in (15, 45, 75, 135, 195, 255, 345):
            self.assertAlmostEqual(reach(bearing), 20, delta=0.6)
        for bearing in (95, 105, 115):
            self.assertAlmostEqual(reach(bearing), 8, delta=0.6)

    def test_files_over_each_other(self):
        far = record(("08:00:00", rig.gps()), ("08:00:01", position(211000001, 50.5, 1.3)))
        near = record(("09:00:00", rig.gps()), ("09:00:01", position(211000002, 50.1, 1.1)))
        paths = self.file("north mast.txt", far), self.file("roof.txt", near)
        _, text = self.page("coverage", *paths)
        svg = xml.etree.ElementTree.fromstring(re.search(r"<svg.*?</svg>", text, re.DOTALL).group())
        texts = ["".join(t.itertext()).strip() for t in svg.iter("{http://www.w3.org/2000/svg}text")]
        for name in ("north mast.txt", "roof.txt"):
            self.assertIn(name, texts)

    def test_nothing_to_draw_is_said(self):
        path = self.file("a.txt", record(("08:00:00", rig.gps())))
        for command, shown in (("summary", 0), ("coverage", 0), ("range", 0), ("signal", 0)):
            page, text = self.page(command, path)
            self.assertIn("There is nothing to draw", text)
            self.assertTrue(page.notes)
        code, _, err = program("coverage", path, "--png", self.folder / "p")
        self.assertEqual(code, 1)
        self.assertIn("coverage.png: there is nothing to draw", err)
        self.assertEqual(list((self.folder / "p").iterdir()), [])

    def test_whole_or_not_at_all(self):
        """No room, no right, no folder: a clear text, exit code 1, and what was there before stays."""
        page = self.folder / "page.html"
        page.write_text("<!DOCTYPE html>before")
        before = sorted(os.listdir(self.folder))

        def no_room():
            resource.setrlimit(resource.RLIMIT_FSIZE, (1000, 1000))
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
        code, _, err = program("ships", self.sample("night.txt"), "--html", page, preexec_fn=no_room)
        self.assertEqual(code, 1)
        self.assertIn("could not be written", err)
        self.assertEqual(page.read_text(), "<!DOCTYPE html>before")
        self.assertEqual(sorted(os.listdir(self.folder)), before)
        for option, target in (("--html", "none/page.html"), ("--png", "none/p"), ("--svg", "page.html"),
                               ("--html", ".")):
            code, out, err = program("coverage", self.sample("night.txt"), option, self.folder / target)
            self.assertEqual((code, out), (1, b""), option)
            self.assertRegex(err, r"^tidewatch-report: .*(No such file|Not a directory|is another file)")
        if os.getuid() != 0:
            locked = self.folder / "locked"
            locked.mkdir(mode=0o555)
            code, _, err = program("coverage", self.sample("night.txt"), "--html", locked / "a.html")
            self.assertEqual(code, 1)
            self.assertIn("Permission denied", err)

    def test_replaces_no_recording(self):
        """A page's name forgotten: the first recording stands in its place."""
        data = self.sample("night.txt").read_bytes()
        first, second = self.file("first.txt", data), self.file("second.txt", data)
        code, _, err = program("--html", first, second)
        self.assertEqual(code, 1)
        self.assertIn("another file", err)
        self.assertEqual(first.read_bytes(), data)
        page = self.folder / "page.html"
        for _ in range(2):  # its own page it does replace
            self.assertEqual(program("--html", page, second)[0], 0)

    def test_the_steps_of_time(self):
        """A report every 25 minutes: by minutes up to 3 hours, and so on; --by goes before."""
        for reports, step in ((7, "minute"), (28, "10 minutes"), (60, "hour"), (1900, "day")):
            lines = []
            for i in range(reports):
                minutes = i * 25
                day, minute = divmod(minutes, 24 * 60)
                month, day = (6, day + 1) if day < 30 else (7, day - 29)
                stamp = f"{month:02d}/{day:02d}/2025 {minute // 60:02d}:{minute % 60:02d}:00"
                lines += [(stamp, position(211000001, 50, 1)), (stamp, rig.levels(30, 18))]
            path = self.file("a.txt", record(*lines))
            page, text = self.page("summary", path)
            self.assertIn(f"Messages per {step}", page.headings)
            self.assertIn(f"n = {reports} messages", text)
            page, _ = self.page("summary", path, "--by", "week")
            self.assertIn("Messages per week", page.headings)

    def test_without_gnuplot(self):
        page = self.folder / "page.html"
        code, _, err = program("coverage", self.sample("night.txt"), "--html", page, env={"PATH": str(self.folder)})
        self.assertEqual(code, 1)
        self.assertIn("gnuplot", err)
        self.assertFalse(page.exists())
        code, _, err = program("coverage", self.sample("night.txt"), env={"PATH": str(self.folder)})
        self.assertEqual((code, err), (0, ""))

    def test_wrong_use(self):
        page = self.folder / "page.html"
        for words in (("coverage", "--csv", "--html", page), ("ships", "--png", self.folder)):
            code, _, _ = program(*words, self.sample("night.txt"))
            self.assertEqual(code, 2)
        self.assertFalse(page.exists())


if __name__ == "__main__":
    rig.main()
