# SPDX-License-Identifier: MIT
"""Ordinary HTML for pages: long and short paragraphs beside and in tables and pictures that float."""

from mixtures.mixture import PICTURE, Mixture


class LayoutMixture(Mixture):
    def __init__(self, random, size, _is_mild):
        super().__init__(random, size, True)
        self.is_plain = True

    def document(self):
        return self.fill(self.block).encode()

    def block(self):
        paragraph = self.paragraph
        table = self.table if self.depth < 4 else paragraph
        return self.pick(5, paragraph, 3, table, 1, self.picture, 1, self.box, 1, self.list)

    def long_words(self, *counts):
        return self.words(self.one(*counts or (1, 5, 30, 100, 300)))

    def paragraph(self):
        capitals = self.one("", "", "", " style='font-variant:small-caps'")
        return "<p%s>%s</p>\n" % (capitals, self.long_words())

    def floating(self):
        position = self.one("", "float:left", "float:right")
        room = self.one("", "", "margin:%dpx" % self.one(5, 40), "padding:%dpx" % self.one(5, 40))
        width = self.one("", "", " width=20%", " width=60%", " width=100%", " width=300")
        return " style='%s;%s'%s" % (position, room, width)

    def table(self):
        def row():
            return "<tr>" + self.many(cell, 1, columns) + "</tr>"

        def cell():
            return "<td>" + self.many(self.block, 1, 2) + "</td>"
        columns = self.one(1, 2, 3)
        self.depth += 1
        rows = self.many(row, 1, self.one(1, 2, 4))
        self.depth -= 1
        return "<table%s border=%d>%s</table>\n" % (self.floating(), self.one(0, 1), rows)

    def box(self):
        return "<div%s><p>%s</p></div>\n" % (self.floating(), self.long_words(5, 60))

    def picture(self):
        return "<p><img align=%s width=%d height=%d src='%s'>%s</p>\n" % (
            self.one("left", "right", "top"), self.one(20, 200, 900), self.one(20, 200, 900),
            PICTURE, self.long_words())

    def list(self):
        return "<ul>" + self.many(lambda: "<li>" + self.long_words(1, 20) + "</li>", 1, 6) + "</ul>"
