# SPDX-License-Identifier: MIT
"""Random tables of RTF: joined cells, rows with more or fewer cells than said, tables in cells."""


class RtfTables:
    def row_words(self, cells):
        right = 0
        made = "\\trowd" + self.one(
            "", "\\trgaph%s\\trleft%s" % (self.whole(), self.whole()), "\\trhdr",
            "\\irow0\\irowband0\\ltrrow\\ts11", "\\trqc",
            "\\trwWidth%s\\trftsWidth3" % self.whole(), "\\ltrrow" if self.is_mild else "\\rtlrow")
        for _ in range(cells):
            is_sensible = self.is_mild or self.chance(.7)
            right += self.one(500, 1000, 2000) if is_sensible else self.one(0, -500, 2**31, 1)
            made += self.one("", "", "\\clmgf", "\\clmrg", "\\clvmgf", "\\clvmrg",
                             "\\clbrdrt\\brdrs\\brdrw%s" % self.whole(), "\\clcbpat2",
                             "\\clvertalc", "\\cltxlrtb\\clftsWidth3\\clwWidth%s" % self.whole())
            made += "\\cellx%d" % right
        return made

    def cell(self):
        return self.pick(
            6, lambda: self.many(self.inline, 1, 2),
            1, lambda: self.many(self.inline, 1, 2) + "\\par " + self.many(self.inline, 1, 2),
            .5, lambda: "\\ls1 " + self.text(),
            .4, lambda: "")

    def table(self):
        return self.nested(self.deep_table, self.paragraph, 6, 2)

    def deep_table(self):
        return (self.many(self.row)
                + self.one("\\pard ", "\\pard\\par ", "", "\\pard\\plain "))

    def row(self):
        said = self.random.randint(1, 5)
        words = self.row_words(said)
        count = said if self.chance(.8) else self.random.randint(0, said + 2)
        cells = ""
        for _ in range(count):
            inner = self.inner_table() if self.chance(.12) else ""
            cells += self.one("", "\\pard") + "\\intbl " + self.cell() + inner + "\\cell "
        return self.pick(.6, lambda: words + " " + cells + "\\row\n",
                         .3, lambda: words + " " + cells + "{" + words + "\\row}\n",
                         .1, lambda: cells + "{" + words + "\\row}\n")

    def inner_table(self):
        count = self.random.randint(1, 3)
        cells = "".join(self.cell() + "\\nestcell " for _ in range(count))
        return ("\\par\\pard\\intbl\\itap%d " % self.one(2, 2, 2, 3, 5, 9) + cells
                + "{\\*\\nesttableprops" + self.row_words(count)
                + "\\nestrow}{\\nonesttables\\par}\\pard\\intbl\\itap1 " + self.text())
