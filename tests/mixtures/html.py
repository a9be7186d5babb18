# SPDX-License-Identifier: MIT
"""Random HTML: blocks, lists and tables in each other, style sheets, lengths of all kinds."""

from mixtures.mixture import PICTURE, Mixture

SELECTORS = ["p", "*", ".c1", "#i", "td>p", "a:hover", "p,", "@media print{p", "ul li",
             "p::first-line", "[a=b]", "h1~p"]
LENGTHS = ["0", "1px", "10pt", "50%", "calc(1px + 2%)", "auto", "inherit", "2em", ""]
FAR_LENGTHS = ["-1px", "-200%"]
HOSTILE_LENGTHS = ["1e9px", "99999999px", "NaN", "1e308em"]
PROPERTIES = ["margin", "margin-left", "margin-top", "margin-bottom", "margin-right", "padding",
              "padding-left", "text-indent", "font-size", "line-height", "width", "height",
              "font", "letter-spacing", "-qt-list-indent",
              "-qt-paragraph-type", "-qt-user-state", "max-width", "top"]
FAR_PROPERTIES = ["-qt-block-indent", "border", "border-width", "border-top"]
DECLARATIONS = ["color:red", "color:rgb(1,2,999)", "color:#12", "float:left", "float:right",
                "page-break-before:always", "page-break-after:always", "white-space:pre",
                "white-space:pre-wrap", "white-space:nowrap", "vertical-align:super",
                "text-align:justify", "font-family:\"a'b\"", "list-style-type:upper-roman",
                "list-style:square", "text-decoration:line-through", "background:url(x)",
                "position:absolute", "font-variant:small-caps", "border-style:solid",
                "background-color:transparent", "text-decoration:none", "font-weight:9999",
                "font-weight:-1", "font-style:italic", "border-collapse:collapse"]
SPANS = ["b", "i", "u", "s", "em", "strong", "code", "tt", "sub", "sup", "span", "big", "small",
         "font", "del", "ins", "cite", "var", "kbd", "mark", "abbr", "q", "dfn", "samp", "label",
         "bdi"]
PICTURES = ["x.png", PICTURE, "data:,x", "/dev/zero", "//srv/x", ""]
TARGETS = ["http://a.b/?x=1&y=2", "mvr://12", "", "#x", "javascript:x", "a b", "http://a/", "x)(y",
           "12", "mailto:a@b"]
# Only hostile documents have end tags without their start, which may end what a word stands in.
STRAY = ["</div>", "</p>", "</span>", "<![CDATA[x]]>", "<!x>", "&#8232;", "</table>", "</td>",
         "<li>", "<tr>", "&#x10FFFF;", "&", "<meta charset=utf-7>", "<base href=x>", "<wbr>",
         "<input value=x>"]


class HtmlMixture(Mixture):
    is_in_table = 0

    def document(self):
        start = self.one("<html><body>", "", "<?xml version=\"1.0\"?><html xmlns=\"x\"><body>",
                         "<!DOCTYPE html>\n<html><head><title>a & b</title></head><body>",
                         "<html><head><style>" + self.sheet() + "</style></head><body>")
        text = start + self.fill(self.block) + self.one("</body></html>", "", "</body>")
        return text.encode("utf-8", "surrogatepass")

    def sheet(self):
        rules = self.many(lambda: self.random.choice(SELECTORS) + "{" + self.declarations() + "}",
                          1, 6)
        return rules + self.one("", "<!--", "/* */", "}")

    def declarations(self):
        lengths = LENGTHS
        if not self.is_plain:
            lengths = lengths + (FAR_LENGTHS if self.is_mild else FAR_LENGTHS + HOSTILE_LENGTHS)
        properties = PROPERTIES if self.is_plain else PROPERTIES + FAR_PROPERTIES
        made = [self.random.choice(properties) + ":" + self.random.choice(lengths)
                + self.one("", "", "!important") for _ in range(self.random.randint(0, 3))]
        return ";".join(made + [self.random.choice(DECLARATIONS)] * self.one(0, 1))

    def attributes(self):
        made = ""
        if self.chance(.35):
            quote = self.one("\"", "'")
            made += " style=" + quote + self.declarations().replace(quote, "") + quote
        if self.chance(.1):
            made += " class=\"c1 c2\""
        if self.chance(.1):
            made += " id=i%d" % self.count
        if self.chance(.1):
            made += self.one(" align=center", " lang=x", " title=\"<b>&quot;\"", " hidden2",
                             " x='\"'", " bgcolor=#f0f", " a=b/", " onclick=\"x\"",
                             " width=" + self.bare(), " height=%s%%" % self.bare(),
                             "" if self.is_mild else " dir=rtl")
        return made

    def bare(self):
        return self.number().strip()

    def block(self):
        return self.nested(self.deep_block, lambda: "<p>" + self.words() + "</p>", 7)

    def deep_block(self):
        return self.pick(
            6, self.paragraph, 1.5, self.division, 1.5, self.list, 1.5, self.table,
            1, lambda: self.around("h%d" % self.random.randint(1, 7), self.inline, 3),
            .5, self.verbatim,
            .5, lambda: "<hr" + self.attributes() + self.one(">", "/>") + self.text(),
            .5, lambda: self.around("blockquote", self.block, 3), .4, self.terms,
            .3, lambda: "<center>" + self.many(self.block, 1, 2) + "</center>",
            .5, self.text, .3, self.junk,
            .3, lambda: "<script>" + self.hidden(self.words) + "</script>",
            .1, lambda: "<style>" + self.sheet() + "</style>")

    def around(self, name, make, most):
        return "<%s%s>" % (name, self.attributes()) + self.many(make, 1, most) + "</%s>" % name

    def paragraph(self):
        return ("<p" + self.attributes() + ">" + self.many(self.inline, 1, 5)
                + self.one("</p>", "", "</p>\n"))

    def division(self):
        return self.around(self.one("div", "section", "article", "main", "nav", "figure", "form",
                                    "fieldset", "address", "xyz", "details", "aside", "header"),
                           self.block, 3)

    def verbatim(self):
        def line():
            return self.inline() + self.one("\n", "\t", "  ", "\n\n")
        return "<pre" + self.attributes() + ">" + self.one("", "\n") + self.many(line) + "</pre>"

    def terms(self):
        def term():
            return ("<dt>" + self.many(self.inline, 1, 2) + "<dd>" + self.many(self.inline, 1, 2)
                    + self.one("", "</dd>"))
        return "<dl>" + self.many(term, 1, 3) + "</dl>"

    def list(self):
        def item():
            content = self.pick(4, lambda: self.many(self.inline, 1, 2),
                                1, lambda: self.many(self.block, 1, 2))
            return ("<li" + self.attributes() + self.one("", " value=" + self.bare()) + ">"
                    + content + self.one("</li>", ""))
        name = self.one("ul", "ol", "ul", "ol", "menu", "dir")
        said = self.one("", " start=" + self.bare(),
                        " type=" + self.one("a", "A", "i", "I", "1", "disc", "x"))
        return "<" + name + self.attributes() + said + ">" + self.many(item) + "</%s>" % name

    def table(self):
        # Tables in tables may be wider than paper.
        return self.paragraph() if self.is_plain and self.is_in_table else self.new_table()

    def new_table(self):
        def cell():
            name = self.one("td", "td", "td", "th")
            span = self.one("", "", "", " colspan=", " rowspan=")
            if span:
                span += self.one("2", "3", "0", "-1", "3" if self.is_plain else "999")
            content = self.pick(5, lambda: self.many(self.inline, 1, 2), 1, self.block,
                                .5, lambda: "")
            return ("<" + name + self.attributes() + span + ">" + content
                    + self.one("</%s>" % name, ""))

        def row():
            cells = self.many(cell, 0 if self.chance(.1) else 1, 5)
            return "<tr" + self.attributes() + ">" + cells + self.one("</tr>", "\n")
        floats = self.pick(6, lambda: "", 1, lambda: " style='float:%s' width=%s" % (
            self.one("left", "right"), self.one("20%", "40%", "300")))
        made = "<table" + floats + self.attributes() + self.one(
            "", " border=1", " cellspacing=%s cellpadding=%s" % (self.bare(), self.bare())) + ">"
        if self.chance(.15):
            made += "<caption>" + self.words() + "</caption>"
        if self.chance(.2):
            made += "<colgroup><col width=5><col></colgroup>"
        self.is_in_table += 1
        if self.chance(.3):
            made += "<thead>" + row() + "</thead><tbody>"
        made += self.many(row)
        if self.chance(.1):
            made += "</tbody><tfoot>" + row() + "</tfoot>"
        made += "</table>"
        self.is_in_table -= 1
        return made

    def junk(self):
        mild = ["<!-- x -->", "&amp;", "&nbsp;", "<br>", "<a name=x></a>"]
        stray = self.random.choice(mild if self.is_mild else mild + STRAY)
        # Text between cells has no place, also that of the rest of the table.
        self.is_over = self.is_over or stray in ("</td>", "<tr>", "</table>")
        return stray + self.text()

    def inline(self):
        return self.nested(self.deep_inline, self.text, 9)

    def deep_inline(self):
        return self.pick(
            8, self.text, 2, self.span, 1, self.link, .5, self.picture,
            .5, lambda: "<br" + self.one(">", "/>", " clear=all>") + self.words(),
            .2, lambda: "<a href=\"http://a.b\">" + self.block() + "</a>",
            .5, lambda: self.one("&amp;", "&lt;b&gt;", "&nbsp;", "&shy;", "&#8232;", "&eacute ",
                                 "&zzz;", "&#0;", "&#xD800;") + self.text(),
            .6, lambda: self.odd() + self.text(),
            .2, self.noted_word,
            .15, lambda: "" if self.is_plain else "<table><tr><td>" + self.words() + "</table>",
            .15, self.table)

    def span(self):
        name = self.random.choice(SPANS)
        said = " color=red size=%s face=\"x\"" % self.bare() if name == "font" else ""
        end = "</%s> " % name if self.is_mild or self.chance(.9) else " "
        return ("<" + name + self.attributes() + said + ">" + self.many(self.inline, 1, 3) + end)

    def link(self):
        return ("<a href=\"%s\"%s>" % (self.random.choice(TARGETS), self.attributes())
                + self.many(self.inline, 1, 2) + "</a> ")

    def picture(self):
        return "<img src=\"%s\"%s>" % (self.random.choice(PICTURES), self.one(
            "", " width=%s height=%s" % (self.bare(), self.bare()), " align=left",
            " style=\"float:right\"", " alt=\"x\""))
