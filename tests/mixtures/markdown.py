# SPDX-License-Identifier: MIT
"""Random Markdown: blocks in each other, tables, notes, comments, raw HTML."""

from mixtures.mixture import Mixture


class MarkdownMixture(Mixture):
    is_in_link = 0

    def document(self):
        front = ""
        if self.chance(.2):
            front = self.one("---\ntitle: a \"b\": c\nauthor: x\ntags: [a]\n---\n\n",
                             "Title: x\nAuthor: y\n\n", "---\n\n", "---\ntitle: |\n  a\n---\n\n")
        text = front + self.fill(lambda: self.block() + "\n")
        return (text + "\n\n" + self.definitions()).encode("utf-8", "surrogatepass")

    def definitions(self):
        """Contents of notes, and targets; a note that nothing points at is not shown."""
        made = ""
        for number in range(10):
            if self.chance(.5):
                content = self.hidden(lambda: self.inline() + self.one("", " [^%d]" % number))
                more = self.hidden(lambda: "    " + self.block().replace("\n", "\n    ") + "\n")
                made += "[^%d]: %s\n%s\n" % (number, content, more if self.chance(.3) else "")
            if self.chance(.5):
                made += "[r%d]: %s %s\n\n" % (number, self.one("<a b>", "/x", "http://a(b)"),
                                              self.one("", "\"t\"", "'t'", "(t)"))
        return made

    def block(self):
        return self.nested(self.deep_block, lambda: self.words() + "\n", 5)

    def deep_block(self):
        return self.pick(
            6, lambda: self.many(self.inline, 1, 6) + "\n",
            1.2, self.list,
            1, self.quote,
            1, self.table,
            .8, self.heading,
            .6, self.fence,
            .4, lambda: "    " + self.words() + "\n",
            .4, lambda: self.one("***", "---", "- - -", "___") + "\n",
            .5, self.html,
            .3, lambda: self.inline() + "\n" + self.one("===", "---", "=", "-") + "\n",
            .2, lambda: "\n")

    def quote(self):
        lines = self.many(self.block, 1, 3).split("\n")
        return "".join(("> " if self.is_mild or self.chance(.95) else "") + line + "\n"
                       for line in lines)

    def list(self):
        mark = self.one("- ", "* ", "-   ", "2.  ", "+ ", "1. ", "7) ", "- [x] ", "999999999. ", "0. ")
        margin = "  " if "x" in mark else " " * len(mark)
        made = ""
        for _ in range(self.random.randint(1, 4)):
            lines = self.many(self.block, 1, 2).rstrip("\n").split("\n")
            made += mark + ("\n" + margin).join(lines) + "\n" + self.one("", "\n")
        return made

    def heading(self):
        return ("#" * self.random.randint(1, 6) + " " + self.inline().replace("\n", " ")
                + self.one("", " #", " ## x") + "\n")

    def table(self):
        columns = self.random.randint(1, 5)

        def row(count):
            cells = [self.inline().replace("\n", " ").replace("|", "\\|") for _ in range(count)]
            return "|" + "|".join(cells) + "|\n"

        rule = "|".join(self.one("-", ":-:", "-:", ":--", "---") for _ in range(columns))
        rows = "".join(row(columns + self.one(0, 0, 0, 1)) for _ in range(self.random.randint(0, 4)))
        # Without the empty line the rows of a table that follows would be rows of this one.
        return row(columns) + "|" + rule + "|\n" + rows + "\n"

    def fence(self):
        mark = self.one("```", "~~~", "`````", "~~~~")
        lines = [self.words() + self.one("", " `x`", "\t", " <b>", " [^1]")
                 for _ in range(self.random.randint(1, 3))]
        end = mark + "\n" if self.chance(.9) else mark + mark[0] + "\n"
        return mark + self.one("", "c++", " a ", "{.x}") + "\n" + "\n".join(lines) + "\n" + end

    def html(self):
        if self.is_mild:
            return (self.one("<div>", "<p align=center>", "<details>") + self.words()
                    + self.one("</div>", "\n</div>", "") + "\n\n")
        start, end = self.one(("<table><tr><td>", ""), ("<script>", "</script>"), ("<!-- ", " -->"),
                              ("<pre>", "</pre>"), ("<?x ", "?>"), ("<![CDATA[", "]]>"),
                              ("<!A ", ">"))
        made = start + self.hidden(self.words)
        if self.chance(.2):
            self.is_over = True
            return made + "\n"
        return made + end + "\n\n"

    def inline(self):
        return self.nested(self.deep_inline, self.text, 8)

    def inner(self):
        return self.inline().strip()

    def deep_inline(self):
        return self.pick(
            12, self.text,
            1, lambda: "*" + self.inner() + "* ",
            1, lambda: "**" + self.inner() + "** ",
            .5, lambda: self.words(1) + " ~~" + self.inner() + "~~ ",
            .4, lambda: "***" + self.inner() + "*** ",
            .6, lambda: "`" + self.words() + "` ",
            .4, lambda: self.words(1) + " ``" + self.words() + " ` x`` ",
            .8, self.link,
            .5, lambda: "[%s][r%d] " % (self.words(), self.random.randint(0, 9)),
            .5, lambda: self.words(1) + "[^%d] " % self.random.randint(0, 9),
            .4, lambda: "![alt](x%d.png \"t\") " % self.count,
            .5, lambda: "<b>" + self.inline() + "</b> ",
            .3, lambda: "<u>" + self.inner() + "</u><sup>" + self.words() + "</sup> ",
            .4, lambda: self.words(1) + "{>>" + self.noted(self.words) + "<<} ",
            .4, lambda: "{==" + self.one("*", "**", "").join(["", self.words(), ""])
            + "==}{>>" + self.noted(self.words) + "<<} ",
            .3, lambda: "<http://a.b/%d> " % self.count,
            .3, lambda: "&amp; &lt; &eacute; &#0; &#8232; " + self.text(),
            .5, lambda: self.odd() + self.words() + self.odd() + " ",
            .3, self.marks,
            .3, lambda: self.words() + "  \n" + self.words() + "\\\n",
            .2, lambda: "`" + self.words(1) + "\n" + self.words(1) + "` ",
            .2, lambda: "*" + self.words(1) + "\n**" + self.words(1) + "*** ",
            .1, lambda: "<!-- " + self.hidden(self.words) + "\n\n" + self.hidden(self.words)
            + " --> ",
            .2, lambda: "<!-- " + self.hidden(self.words) + " --> ",
            .2, self.noted_word,
            .3, lambda: "_" + self.words(1) + "_" + self.text(),
            .2, lambda: "\"" + self.words(1) + "\"'s -- " + self.words(1) + "...\" ")

    def link(self):
        self.is_in_link += 1
        inner = self.inner()
        self.is_in_link -= 1
        return "[%s](http://a.b/%d%s) " % (inner, self.count, self.one("", " \"t\"", " (t)"))

    def marks(self):
        marks = ["\\*", "\\\\", "\\[", "&", "#", "* ", "_ "]
        if not self.is_mild:
            marks += ["*", "_", "`", "[", "![", "]", "~", "|", ">", "{", "{==", "==}"]
        mark = self.random.choice(marks)
        if mark == "![" and self.is_in_link:  # it would make a picture of the link
            mark = "!"
        return mark + self.text()
