# SPDX-License-Identifier: MIT
"""What stands in paragraphs of random RTF: formats, fields, notes, pictures, letters, groups."""

PICTURE = ("89504e470d0a1a0a0000000d49484452000000010000000108060000001f15c4890000000d49444154789c"
           "6364f8cf50 0f00038601 8059a2a3cd0000000049454e44ae426082")

FORMATS = ["b", "i", "ul", "super", "sub", "caps", "scaps", "strike", "striked1", "lang1037",
           "rtlch\\af1", "ltrch", "plain", "ulwave", "ulc2", "outl", "shad", "embo",
           "dbch\\af1\\loch", "b0", "ulnone", "nosupersub", "revised\\revauth1", "chbrdr\\brdrs"]
NUMBERED_FORMATS = ["fs", "up", "dn", "expndtw", "kerning", "charscalex", "chshdng"]
CHOSEN_FORMATS = ["f", "cf", "highlight", "cs", "chcbpat"]

FIELDS = ["HYPERLINK", "HYPERLINK \"mvr://12\"", "HYPERLINK \"javascript:x\"", "REF b1 \\\\h",
          "HYPERLINK {\\field{\\*\\fldinst QUOTE \"x\"}{\\fldrslt http://c}} \\\\t \"_blank\"",
          "INCLUDEPICTURE \"file:///etc/passwd\" \\\\d", "IF 1 = 1 \"a\" \"b\"",
          "PAGEREF _Toc1 \\\\h", "", "TOC \\\\o \"1-3\" \\\\h"]
# Fields whose results are made anew.
OWN_FIELDS = ["PAGE \\\\* MERGEFORMAT", "SYMBOL 97 \\\\f \"Symbol\" \\\\s 12",
              "EQ \\\\o\\\\ad(\\\\s\\\\up 9(a),b)"]

UNITS = [8364, -10179, 1488, 65533, 55357, -3913, 0, -1, 65535, 65536, 128512, 12354, 10, 13, 9,
         92, 123, 125, 8232, 8233, -4, 65279, 1]
UNIT_FORMS = ["\\u%d?", "\\u%d \\'3f", "\\u%d{}", "{\\uc0\\u%d }", "{\\uc1\\u%d}", "\\u%d\\par",
              "{\\uc2\\u%d\\'81\\'40}", "\\u%d  ", "{\\uc3 \\u%d{a}bc}"]

SIGNS = ["\\tab ", "\\emdash ", "\\line ", "\\~", "\\_", "\\-", "\\bullet ", "\\page ", "\\column ",
         "\\lbr1 ", "\\softline ", "\\zwj ", "\\chdate ", "\\chpgn ", "\\chftn ",
         "\\:", "\\|", "\\*", "\\{", "\\}", "\\\\", "\\'5c", "\\softpage ", "\\sect ",
         "\\sectd\\cols2 ", "\x00", "\x1a", "\x0b", "\x0c", "\xff", "\x80"]

# Only files of ours say how much text a note belongs to; not that of codes, with which it would go.
OWN_WORDS = ["{\\*\\mvrframe1}", "{\\*\\mvrframeend}", "{\\*\\mvrnote 0 1}", "\\mvrx1 ", "\\mvrp2 ",
             "{\\*\\mvrprops{1 2001d:1;}}", "\\mvrs1 ", "{\\*\\mvrdefaults x}", "\\mvrt3 ",
             "\\mvrl1 ", "\\mvrc1 "]


class RtfInline:
    def inline(self):
        return self.nested(self.deep_inline, self.text, 7)

    def inlines(self, most=2):
        return self.many(self.inline, 1, most)

    def deep_inline(self):
        return self.pick(
            8, self.text, 3, self.format, 1.5, self.field, 1.2, self.footnote, 1, self.comment,
            .7, self.picture, .6, self.bookmark, 1, self.unit, .6, self.double_bytes,
            .5, lambda: self.random.choice(SIGNS) + self.text(),
            .4, lambda: "{\\upr{" + self.hidden(self.text) + "}{\\*\\ud{" + self.inlines() + "}}}",
            .5, self.unknown, .3, self.embedded,
            .4, lambda: self.one("{\\v ", "{\\deleted ") + self.hidden(self.text) + "}",
            .3, self.shape,
            .3, lambda: "{\\listtext\\pard " + self.hidden(self.words) + "\\tab}" + self.text(),
            .3, lambda: self.random.choice(OWN_WORDS) + self.text(), .2, self.codes)

    def format(self):
        def word():
            return "\\" + self.pick(
                len(FORMATS), lambda: self.random.choice(FORMATS),
                len(NUMBERED_FORMATS),
                lambda: self.random.choice(NUMBERED_FORMATS)
                + (self.one("0", "3", "20") if self.is_plain else self.whole()),
                len(CHOSEN_FORMATS),
                lambda: self.random.choice(CHOSEN_FORMATS) + self.one(*"01239"))
        words = self.many(word)
        if self.chance(.25):
            return words + " " + self.text()
        return "{" + words + " " + self.inlines(3) + "}"

    def field(self):
        is_own = self.chance(.25)
        instruction = self.pick(
            is_own, lambda: self.random.choice(OWN_FIELDS),
            not is_own, lambda: self.one("HYPERLINK \"http://a.b/%s\"" % self.count,
                                         "HYPERLINK \\\\l \"b%d\"" % self.random.randint(0, 5),
                                         self.random.choice(FIELDS)))
        result = self.hidden(self.inlines) if is_own else self.inlines(3)
        result = self.one("@" + result, "\\plain @" + result, "{@" + result + "}")
        start, end = self.one(("{\\*\\fldinst ", "}"), ("{\\*\\fldinst {", "}}"),
                              ("{\\fldinst{\\b ", "}}"))
        return ("{\\field" + self.one("", "\\fldlock", "\\flddirty", "\\fldedit") + start
                + instruction + end + "{\\fldrslt " + result + "}}")

    def footnote(self):
        word = " " + self.words(1)
        content = self.noted(lambda: self.pick(5, lambda: self.inlines(3),
                                               2, lambda: self.many(self.paragraph, 1, 3),
                                               1, self.table))
        return (word + "{\\super\\chftn}{\\footnote" + self.one("", "\\ftnalt")
                + self.one("\\pard\\plain ", "{\\super\\chftn} ", " ") + content + "}")

    def comment(self):
        number = self.random.randint(1, 9)
        author = self.one("", "{\\*\\atnid x}{\\*\\atnauthor Au}")
        head = self.one("\\pard\\plain ", "{\\*\\atnref %d}" % number, " ",
                        "{\\*\\atndate 123456}{\\*\\atnref %d}" % number,
                        "{\\*\\atndate %s}" % self.whole())
        # Its last word is its own, so that no two notes have to share one.
        text = (self.one("", self.inlines()) if self.depth < 7 else "") + " " + self.words(1)
        content = self.noted(lambda: self.pick(5, self.inlines,
                                               1, lambda: self.many(self.paragraph, 1, 2),
                                               .5, self.table))
        if self.chance(.5):
            return text + author + "\\chatn{\\*\\annotation" + head + content + "}"
        return ("{\\*\\atrfstart %d}" % number + text + "{\\*\\atrfend %d}" % number + author
                + "{\\*\\annotation " + head + content + "}")

    def picture(self):
        data = self.one(PICTURE, PICTURE, PICTURE, PICTURE[:40], "00", "", "ffd8ffe0", "zz89",
                        "\\bin3 a}{")
        kind = self.one("\\pngblip", "\\jpegblip", "\\wmetafile8", "\\emfblip", "\\dibitmap0",
                        "\\macpict", "", "\\pngblip{\\*\\blipuid 00}",
                        "{\\*\\picprop{\\sp{\\sn x}{\\sv y}}}\\pngblip")
        sizes = self.one([], ["picw", "pich", "picwgoal", "pichgoal", "picscalex", "picscaley"],
                         ["piccropl", "piccropr", "piccropt", "piccropb"])
        made = ("{\\pict" + kind + "".join("\\" + size + self.whole() for size in sizes) + " "
                + data + "}")
        return self.one(made, "{\\*\\shppict" + made + "}{\\nonshppict" + made + "}")

    def bookmark(self):
        start, end = (form % self.random.randint(0, 5)
                      for form in ("{\\*\\bkmkstart b%d}", "{\\*\\bkmkend b%d}"))
        return self.one(start + self.text() + end, start, end)

    def unit(self):
        return self.random.choice(UNIT_FORMS) % self.random.choice(UNITS) + " " + self.text()

    def double_bytes(self):
        trail = self.one(0x40, 0x5c, 0x7b, 0x7d, 0x30, 0x20, 0xff, 0x0a)
        more = self.one("", "\\'e9")
        if not self.is_mild and self.chance(.3):
            more = self.one("\x81\x5c", "\x83\x7d", "\xe9")
            self.is_over = True  # the mark behind it may be half a letter now
        return ("{\\f%s\\'%02x\\'%02x%s} " % (self.one(*"0123"), self.random.randint(0x81, 0xfe),
                                              trail, more) + self.text())

    def unknown(self):
        left_out = "{\\*\\bar " + self.hidden(self.text) + "}"
        if not self.is_mild:
            return left_out
        return self.one("\\foo%s " % self.whole() + self.text(), left_out,
                        "{\\*\\bar{\\b{" + self.hidden(self.text) + "}}\\bin2 {{}",
                        "{\\baz " + self.inlines() + "}")

    def embedded(self):
        return ("{\\object\\objemb\\objw%s{\\*\\objclass x}{\\*\\objdata 0105}{\\result "
                % self.whole() + self.inlines() + "}}")

    def codes(self):
        """Notes in the text, which are written as codes."""
        kind = self.one("fn=", "ps=", "annot \\\\color=\\{\\\\R=1\\\\G=0\\\\B=0\\} \\\\text=")
        return ("\\{\\'5cMvrn_%s" % kind + self.noted(self.text)
                + "\\'5cend_Mvrn_%s\\} " % kind.split("=")[0].split(" ")[0])
