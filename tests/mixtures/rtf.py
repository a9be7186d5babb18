# SPDX-License-Identifier: MIT
"""Random RTF: paragraphs, sections, frames, and the heads of documents."""

from mixtures.mixture import Mixture
from mixtures.rtf_inline import RtfInline
from mixtures.rtf_tables import RtfTables

HEADS = ["\\rtf1\\ansi\\ansicpg1252", "\\rtf1\\mac", "\\rtf1\\pc", "\\rtf1\\pca",
         "\\rtf1\\ansi\\ansicpg932\\deff0", "\\rtf1\\ansi\\ansicpg65001",
         "\\rtf1\\ansi\\deff1\\uc0", "\\rtf", "\\rtf1\\ansi\\uc2", "\\rtf1\\ansi\\ansicpg936",
         "\\rtf1\\ansi\\ansicpg1255\\rtldoc", "\\rtf1\\ansi\\ansicpg950",
         "\\rtf1\\ansi\\ansicpg949", "\\rtf1\\ansi\\cocoartf1",
         "\\rtf1\\adeflang1025\\ansi\\ansicpg1252\\uc1\\adeff31507\\deff0\\stshfdbch31505"]

PARAGRAPH_WORDS = ["li", "ri", "fi", "sb", "sa", "sl", "slmult", "tx", "tqr\\tx",
                   "tqdec\\tldot\\tx", "s", "outlinelevel", "ls1\\ilvl0\\li", "ilvl", "cbpat",
                   "brdrt\\brdrs\\brdrw", "lin", "rin", "widctlpar\\aspalpha\\nowidctlpar",
                   "shading", "posx1\\absw100\\dxfrtext", "pagebb", "keep", "keepn",
                   "itap0\\adjustright"]


class RtfMixture(RtfInline, RtfTables, Mixture):
    def document(self):
        head = "{" + self.random.choice(HEADS) + self.hidden(self.tables_of_head)
        return (head + self.fill(self.block) + "}").encode("latin-1", "replace")

    def tables_of_head(self):
        made = self.fonts() if self.chance(.7) else ""
        if self.chance(.5):
            colors = self.many(lambda: "\\red%s\\green%s\\blue%s;"
                               % (self.whole(), self.whole(), self.whole()))
            made += "{\\colortbl" + self.one(";", "") + colors + "}"
        if self.chance(.5):
            made += self.styles()
        if self.chance(.5):
            made += self.list_tables()
        if self.chance(.3):
            made += ("{\\info{\\title T & <b> \\u8364?}{\\author A}{\\*\\company x}{\\creatim"
                     "\\yr%s\\mo%s}}" % (self.whole(), self.whole()))
        if self.chance(.2):
            made += "{\\*\\revtbl{" + self.words() + ";}{\\b x;}}"
        if self.chance(.2):
            forms = ["\\deftab%s\\viewkind%s", "\\deflang%s\\widowctrl\\ftnbj\\endnotes%s"]
            if not self.is_plain:  # tables of many columns have no room on small paper
                forms += ["\\paperw%s\\paperh%s", "\\margl%s\\margr%s"]
            made += self.one(*forms) % (self.whole(), self.whole())
        return made

    def fonts(self):
        """Fonts of signs have the number 4, as words cannot be read in them: nothing uses it."""
        def font():
            form = self.one("{\\f%s\\froman\\fcharset%s %s;}",
                            "{\\f%s\\fnil\\fcharset%s{\\*\\falt x}%s{\\*\\fontemb\\ftnil 00};}",
                            "\\f%s\\fcharset%s %s;")
            charset = self.one("0", "128", "134", "136", "129", "177", "178", "255", "1", "77",
                               "999")
            return form % (self.one("0", "1", "2", "3"), charset,
                           self.one("Serif", "Arial Cyr", "x\"y", "MS \\'96\\'be", ""))
        signs = self.one("", "{\\f4\\fcharset2 Symbol;}", "{\\f4\\fnil Wingdings;}")
        return "{\\fonttbl" + self.many(font) + signs + "}"

    def styles(self):
        def style():
            numbers = tuple(self.one(*"0123456789") for _ in range(4))
            return self.one("{\\s%s\\sbasedon%s\\snext%s\\b heading %s;}",
                            "{\\*\\cs%s\\additive\\sbasedon%s\\i\\slink%s c%s;}",
                            "{\\*\\ts%s\\tsrowd\\sbasedon%s\\trbrdrt\\ltrrow%s t%s;}",
                            "{\\s%s\\ls1\\ilvl%s\\li%s p%s;}") % numbers
        return "{\\stylesheet" + self.many(style, 1, 8) + "}"

    def list_tables(self):
        def level():
            kind = self.one("0", "1", "2", "3", "4", "23", "255", "22", "-1")
            return ("{\\listlevel\\levelnfc%s\\leveljc0\\levelstartat%s{\\leveltext\\'0%s\\'00.%s;}"
                    "{\\levelnumbers\\'01;}\\fi-360\\li720}"
                    % (kind, self.whole(), self.one(*"0123"),
                       self.one("", "\\'01)", "\\u8226 ?", "x")))

        def changes():
            return self.one("", "{\\lfolevel\\listoverridestartat\\levelstartat7}",
                            "{\\lfolevel\\listoverrideformat" + level() + "}")

        lists = self.many(lambda: "{\\list\\listtemplateid1"
                          + self.one("", "\\listsimple", "\\listhybrid") + self.many(level, 0, 9)
                          + "{\\listname x;}\\listid%s}" % self.one(*"1234"))
        overrides = self.many(lambda: "{\\listoverride\\listid%s\\listoverridecount%s%s\\ls%s}"
                              % (self.one(*"12345"), self.one(*"0129"), changes(),
                                 self.one(*"1234")))
        return "{\\*\\listtable" + lists + "}{\\*\\listoverridetable" + overrides + "}"

    def block(self):
        return self.pick(6, self.paragraph, 2, self.table, 1, self.section, 1, self.page_part,
                         1, self.shape, .6, self.list_paragraph, .4, self.old_list, .3, self.frame)

    def paragraph_words(self):
        # In a narrow cell a wide indent leaves no room for words.
        words = self.many(lambda: "\\" + self.random.choice(PARAGRAPH_WORDS)
                          + (self.one("0", "1", "20", "120") if self.is_plain else self.whole()),
                          0, 3)
        return words + self.one("", "\\qc", "\\qj", "\\qr", "\\ltrpar", "\\qd",
                                "\\ltrpar" if self.is_mild else "\\rtlpar") + " "

    def paragraph(self):
        return (self.one("", "\\pard", "\\pard\\plain") + self.paragraph_words()
                + self.many(self.inline, 1, 5)
                + self.one("\\par", "\\par ", "\\par\n", "\\\n", "\\\r", "\\line ") + "\n")

    def section(self):
        return ("\\sect" + self.one(
            "", "\\sectd", "\\sectd\\sbknone", "\\sectd\\sbkcol\\cols3\\colsx%s" % self.whole(),
            "\\sectd\\pgwsxn%s\\pghsxn%s\\lndscpsxn" % (self.whole(), self.whole()))
                + " " + self.paragraph())

    def page_part(self):
        def part():
            name = self.one("header", "footer", "headerl", "headerr", "footerf", "headerf",
                            "ftnsep", "ftnsepc", "aftnsep")
            more = self.one("", "{\\field{\\fldinst PAGE}{\\fldrslt 1}}")
            table = self.table() if self.chance(.2) else ""
            return "{\\" + name + " " + self.many(self.paragraph, 1, 2) + more + table + "}"
        return self.hidden(part)

    def shape(self):
        return self.nested(self.deep_shape, self.paragraph, 4, 2)

    def deep_shape(self):
        text = self.pick(3, lambda: self.many(self.paragraph, 1, 2), 1, self.table)
        return self.pick(
            2, lambda: "{\\shp{\\*\\shpinst\\shpleft%s\\shptop%s{\\sp{\\sn fFlipH}{\\sv 0}}"
            "{\\shptxt %s}}{\\shprslt{\\*\\do\\dobxpage{\\dptxbxtext %s}}}}"
            % (self.whole(), self.whole(), text, self.hidden(self.paragraph)),
            1, lambda: "{\\*\\do\\dobxcolumn\\dptxbx{\\dptxbxtext " + text + "}\\dpx0}",
            1, lambda: "{\\shpgrp{\\*\\shpinst{\\shp{\\*\\shpinst{\\shptxt " + text + "}}}}}")

    def list_paragraph(self):
        return ("{\\listtext\\tab}\\pard\\ls%s\\ilvl%s " % (self.one(*"12349"),
                                                            self.one(*"012389"))
                + self.many(self.inline, 1, 3) + "\\par\n")

    def old_list(self):
        return ("\\pard{\\pntext 1.\\tab}{\\*\\pn\\pnlvl%s\\pnstart%s\\pndec{\\pntxtb (}"
                "{\\pntxta )}}" % (self.one("body", "blt", "cont", "1", "9"), self.whole())
                + self.many(self.inline, 1, 3) + "\\par\n")

    def frame(self):
        return self.nested(lambda: "{\\*\\mvrframe%s}" % self.one(*"123")
                           + self.many(self.block, 1, 3) + "{\\*\\mvrframeend}",
                           self.paragraph, 3)
