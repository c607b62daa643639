"""Reads the manual's pages. They are well-formed XML, so that the strictest reader can be used."""
import pathlib
import xml.etree.ElementTree as ElementTree


class Page:
    def __init__(self, file):
        self.name = file.name
        self.root = ElementTree.fromstring(file.read_bytes())

    def text(self, element=None):
        return " ".join("".join((self.root if element is None else element).itertext()).split())

    def anchors(self):
        return [element.get("id") for element in self.root.iter() if element.get("id")]

    def links(self):
        return [element.get("href") for tag in ("a", "link") for element in self.root.iter(tag)]

    def pictures(self):
        return list(self.root.iter("img"))

    def of_class(self, tag, name):
        return [element for element in self.root.iter(tag) if element.get("class") == name]

    def rows(self, table):
        return [[self.text(cell) for cell in row] for row in table.iter("tr")]

    def figures(self):
        """(name, text) of each marked figure."""
        return [(element.get("data-figure"), self.text(element))
                for element in self.root.iter("span") if element.get("data-figure")]


def help_folder(source):
    return pathlib.Path(source) / "resources/help"


def read_pages(source):
    return {file.name: Page(file) for file in sorted(help_folder(source).glob("*.html"))}
