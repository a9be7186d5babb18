# SPDX-License-Identifier: MIT
"""Random scripts of Final Draft: paragraphs, dual dialogue, notes, title pages."""

import re

from mixtures.fdx_parts import FdxParts, escaped, quoted
from mixtures.mixture import Mixture

NO_XML = re.compile("[\x00-\x08\x0b\x0c\x0e-\x1f\ufffe\uffff]")

OUTLINE = "Outline 1"  # stands on no page
TYPES = ["Scene Heading", "Action", "Character", "Parenthetical", "Dialogue", "Transition", "Shot",
         "Cast List", "General", "", OUTLINE, "New Act", "End of Act", "Custom", "Act & \"x\"",
         "Singing", "\u00e9l\u00e9ment"]
STYLES = ["Bold", "Italic", "Underline", "Bold+Italic", "AllCaps", "AllCaps+Bold", "Strikeout",
          "UnderlineWords", "SmallCaps", "x", "", "+", "Bold++Bold"]


class FdxMixture(FdxParts, Mixture):
    def document(self):
        head = self.one("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?>\n",
                        "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n", "\ufeff", "")
        version = self.one("", " Version=\"%s\"" % self.one("1", "2", "3", "4", "5", "6", "", "x",
                                                           "99999999999"))
        head += ("<FinalDraft DocumentType=\"%s\" Template=\"No\"%s>\n"
                 % (self.one("Script", "Script", "Script", "Text", "Outline", ""), version))
        content = "<Content>\n" + self.fill(self.paragraph) + "</Content>"
        parts = self.parts_behind()
        self.random.shuffle(parts)
        parts = parts + [content] if self.chance(.1) else [content] + parts
        if self.chance(.05):
            parts.append("<Content>" + self.hidden(self.paragraph) + "</Content>")
        text = head + "\n".join(parts) + "\n</FinalDraft>\n"
        if self.is_mild:
            text = NO_XML.sub("", text)
        return text.encode("utf-8", "surrogatepass")

    def attributes(self):
        choices = [
            "Alignment=\"%s\"" % self.one("Left", "Center", "Right", "Full", "x", ""),
            "LeftIndent=\"%s\"" % self.number(), "RightIndent=\"%s\"" % self.number(),
            "FirstIndent=\"%s\"" % self.number(), "Leading=\"%s\"" % self.one("Regular", "x"),
            "SpaceBefore=\"%s\"" % self.number(), "Spacing=\"%s\"" % self.number(),
            "StartsNewPage=\"%s\"" % self.one("Yes", "No", "1", "true"),
            "Number=%s" % quoted(self.one("1", "1A", "", "&lt;", "9" * 50)), "Flags=\"x\"",
            "Label=\"%s\"" % self.number(), "id=\"%s\"" % self.number(), "xml:space=\"preserve\"",
            "a%d=\"%s\"" % (self.count, "v" * self.one(1, 30, 300))]
        return "".join(" " + choice
                       for choice in self.random.sample(choices, self.one(0, 0, 1, 2, 4)))

    def paragraph(self):
        def plain():
            return "<Paragraph Type=\"Action\"><Text>" + self.words() + "</Text></Paragraph>"
        return self.nested(self.deep_paragraph, plain, 5)

    def deep_paragraph(self):
        if self.chance(.05):
            return self.one("<Paragraph/>", "<Paragraph Type=\"Action\"></Paragraph>", "<!-- c -->",
                            "<?pi x?>", "<Paragraph Type=\"Action\"><Text/></Paragraph>", "\n\n",
                            "<Unknown>" + self.hidden(self.paragraph) + "</Unknown>")
        kind = self.random.choice(TYPES)
        if kind == OUTLINE and self.is_plain:
            kind = "Action"
        inner = ""
        if (kind == "Scene Heading" and self.chance(.5)) or self.chance(.05):
            inner += self.scene_properties()
        if self.chance(.08):
            inner += "<DualDialogue>" + self.many(self.paragraph, 1, 3) + "</DualDialogue>"
        if self.chance(.03):
            inner += ("<OmittedScene>" + self.hidden(lambda: self.many(self.paragraph, 1, 2))
                      + "</OmittedScene>")
        if self.chance(.03):
            inner += ("<Alts Current=\"%s\"><Alt Id=\"1\">" % self.number()
                      + self.hidden(self.paragraph) + "</Alt></Alts>")
        inner += self.many(self.inline, 0)
        said = " Type=" + quoted(escaped(kind)) if self.chance(.95) else ""
        return "<Paragraph" + said + self.attributes() + ">" + inner + "</Paragraph>\n"

    def inline(self):
        return self.pick(8, self.run, 1, self.noted_run, .3, lambda: "<Bookmark></Bookmark>",
                         .3, lambda: "<DynamicLabel Type=\"Page #\"/>", .3, lambda: "<!-- x -->",
                         .2, lambda: "<Foo>" + self.hidden(self.words) + "</Foo>")

    def noted_run(self):
        """A note stands behind a word of its own: two notes have to part the word they share."""
        return "<Text> " + self.words(1) + "</Text>" + self.note() + "<Text> </Text>"

    def note(self):
        return "<ScriptNote ID=\"%s\">" % self.number() + self.noted(self.content) + "</ScriptNote>"

    def content(self):
        def paragraph():
            return "<Paragraph%s>" % self.attributes() + self.many(self.run, 0, 2) + "</Paragraph>"
        return self.nested(lambda: self.many(paragraph, 0, 3), lambda: "", 9)

    def run(self):
        said = ""
        if self.chance(.3):
            said += " Style=\"%s\"" % self.random.choice(STYLES)
        if self.chance(.2):
            said += " Font=%s" % quoted(escaped(self.one("Courier Final Draft", "x\"y", "a'b;c", "",
                                                         ";", "\u65e5")))
        if self.chance(.2):
            said += " Size=\"%s\"" % self.number()
        if self.chance(.2):
            said += " Color=\"#%s\"" % self.one("000000000000", "FFFF", "12345", "", "-1",
                                                "GGGG00000000")
        if self.chance(.1):
            said += " Background=\"#%s\"" % self.one("000000000000", "x")
        if self.chance(.1):
            said += (" RevisionID=\"%s\" AdornmentStyle=\"%s\" TagNumber=\"%s\""
                     % (self.number(), self.number(), self.number()))
        return "<Text" + said + ">" + self.many(self.piece, 1, 3) + "</Text>"

    def piece(self):
        return self.pick(
            6, self.text,
            1, lambda: escaped(self.odd()) + " " + self.words(),
            .5, lambda: "&#%s;" % self.one("8232", "x2029", "9", "10", "13", "160", "x10FFFF",
                                           "65533"),
            .5, lambda: "<![CDATA[" + self.words() + " <x> &amp; ]]>",
            .3, lambda: "&lt;&amp;&gt;&quot;&apos;" + self.words(),
            .3, lambda: "\n\t" + self.words(),
            .3, lambda: " " + self.words(1) + self.note() + " ",
            .2, self.noted_word)
