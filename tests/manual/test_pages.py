"""The pages of the manual as a whole: markup, links, pictures, and what must agree with the program's tables.

    test_pages.py SOURCE-FOLDER BUILT-HELP-FOLDER
"""
import pathlib
import re
import struct
import sys
import unittest

from manual_pages import help_folder, read_pages

SOURCE = pathlib.Path(sys.argv[1]).resolve() if len(sys.argv) > 1 else None
BUILT = pathlib.Path(sys.argv[2]).resolve() if len(sys.argv) > 2 else None

# What the help window's rich text shows as it is meant.
TAGS = {"html", "head", "meta", "title", "link", "body", "h1", "h2", "h3", "p", "ul", "ol", "li", "table", "tr", "th",
        "td", "img", "a", "b", "i", "tt", "pre", "br", "sup", "span"}
MOST_PICTURE_BYTES = 60000
MOST_PICTURE_WIDTH = 780  # pixels: what the help window shows without scrolling sideways


def read(file):
    return (SOURCE / file).read_text(encoding="utf-8")


def string_table():
    """Number and text of each entry, without marks of keys."""
    entries = re.findall(r'\{(\d+),\s*"((?:[^"\\]|\\.)*)"', read("src/base/StringTable.cpp"))
    return {int(number): text.replace("&", "") for number, text in entries}


class Pages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.pages = read_pages(SOURCE)

    def test_there_is_an_entry_and_it_leads_to_all(self):
        reached, waiting = set(), ["index.html"]
        while waiting:
            name = waiting.pop()
            if name not in reached:
                reached.add(name)
                links = [link.split("#")[0] for link in self.pages[name].links()]
                waiting += [link for link in links if link.endswith(".html")]
        self.assertEqual(reached, set(self.pages))
        self.assertGreater(len(reached), 8)

    def test_only_what_the_help_window_shows_is_used(self):
        for page in self.pages.values():
            self.assertLessEqual({element.tag for element in page.root.iter()}, TAGS, page.name)
            title = page.text(page.root.find("head/title"))
            self.assertEqual(len(list(page.root.iter("h1"))), 1, page.name)
            self.assertTrue(title)

    def test_no_two_anchors_of_a_page_are_alike(self):
        for page in self.pages.values():
            anchors = page.anchors()
            self.assertEqual(len(anchors), len(set(anchors)), page.name)

    def test_every_link_has_its_goal(self):
        links = 0
        for page in self.pages.values():
            for link in page.links():
                name, _, anchor = link.partition("#")
                where = f"{page.name}: {link}"
                self.assertNotIn(":", link, where)
                goal = name or page.name
                self.assertTrue((help_folder(SOURCE) / goal).is_file(), where)
                if anchor:
                    self.assertIn(anchor, self.pages[goal].anchors(), where)
                links += 1
        self.assertGreater(links, 50)

    def test_every_picture_is_there_small_and_described(self):
        used = set()
        for page in self.pages.values():
            for picture in page.pictures():
                used.add(picture.get("src"))
                self.assertTrue(picture.get("alt"), page.name)
        self.assertEqual(used, {file.name for file in help_folder(SOURCE).glob("*.png")})
        for name in used:
            data = (help_folder(SOURCE) / name).read_bytes()
            self.assertEqual(data[:8], b"\x89PNG\r\n\x1a\n", name)
            self.assertLess(len(data), MOST_PICTURE_BYTES, name)
            self.assertLessEqual(struct.unpack(">I", data[16:20])[0], MOST_PICTURE_WIDTH, name)

    def test_the_build_copies_all_of_it_and_names_the_entry(self):
        for file in help_folder(SOURCE).iterdir():
            if file.name != "CMakeLists.txt":
                self.assertEqual((BUILT / file.name).read_bytes(), file.read_bytes(), file.name)
        entry = (help_folder(SOURCE) / "index.html").read_bytes()
        self.assertEqual((BUILT / "Helpfile.hlp").read_bytes(), entry)

    def test_the_keys_are_those_of_the_commands(self):
        strings = string_table()
        table = read("src/ui/window/CommandTable.h")
        commands = re.findall(r'\{"(\w+)", "\w*", (\d+), "([^"]*)", "\w*", "([^"]*)"\}', table)
        self.assertGreater(len(commands), 20)
        captions = {name: strings[int(number)] if int(number) else caption.replace("&", "")
                    for name, number, caption, _ in commands}
        # This key has no entry in a menu; it does what this one does.
        captions["helpContents"] = captions["mnuHelpTopics"]
        expected = [[key.replace("; ", ", "), captions[name]] for name, _, _, key in commands if key]
        entries = re.findall(r'\{"\w+", (\d+), "\w+", "([^"]+)"\}', table)
        self.assertEqual(len(entries), 4)
        expected += [[key, strings[int(number)]] for number, key in entries]
        keys = self.pages["keys.html"]
        shown = keys.rows(keys.of_class("table", "commands")[0])[1:]
        self.assertEqual(sorted(shown), sorted(expected))

    def test_the_reasons_are_those_of_the_reports_in_their_order(self):
        texts = re.findall(r'\{rejection::\w+, "([^"]+)"\}', read("src/sizing/RejectionReasons.h"))
        self.assertEqual(len(texts), 9)
        page = self.pages["reasons.html"]
        headings = [page.text(heading) for heading in page.root.iter("h2")]
        self.assertEqual(headings[:9], texts)

    def test_each_kind_of_load_has_its_section(self):
        strings = string_table()
        page = self.pages["loads.html"]
        headings = {page.text(heading) for heading in page.root.iter("h2")}
        self.assertLessEqual({strings[number] for number in range(600, 609)}, headings)

    def test_commands_named_with_their_menu_exist(self):
        own = re.findall(r'\{"\w+", "\w+", 0, "([^"]+)"', read("src/ui/window/CommandTable.h"))
        captions = {text.replace("&", "").rstrip(".") for text in [*own, *string_table().values()]}
        paths = 0
        for page in self.pages.values():
            for bold in page.root.iter("b"):
                text = page.text(bold)
                if " > " in text:
                    for part in text.split(" > "):
                        self.assertTrue(part.rstrip(".") in captions, f"{page.name}: {text}")
                    paths += 1
        self.assertGreater(paths, 5)

    def test_fields_of_the_power_system_are_called_as_on_screen(self):
        strings = string_table()
        page = self.pages["site.html"]
        shown = {row[0] for table in page.root.iter("table") for row in page.rows(table)}
        for number in [140, 141, 143, 144, 150, 151, 152, 153, 154, 155, 156, 321, 323, 324, 325]:
            self.assertIn(strings[number].strip(), shown)

    def test_nothing_is_left_to_be_written(self):
        for page in self.pages.values():
            self.assertIsNone(re.search(r"TODO|FIXME|XXX|lorem", page.text(), re.IGNORECASE), page.name)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
