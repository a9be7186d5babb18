# SPDX-License-Identifier: MIT
"""What stands in a random script beside its paragraphs: settings, pages, notes by their ranges."""


def escaped(text):
    return text.replace("&", "&amp;").replace("<", "&lt;")


def quoted(text):
    return "\"" + text.replace("\"", "&quot;") + "\""


class FdxParts:
    def parts_behind(self):
        made = []
        if self.chance(.4):
            # A title page is one page, however long it is.
            content = self.words() if self.is_plain else ""
            content = ("<Paragraph><Text>" + content + "</Text></Paragraph>" if content
                       else self.many(self.paragraph))
            made.append("<TitlePage><Content>" + content + "</Content></TitlePage>")
        hidden = [(.4, self.ranged_notes), (.3, self.header), (.2, self.vocabulary),
                  (.15, self.alternates), (.15, self.unknown), (.15, self.tags)]
        made += [self.hidden(make) for probability, make in hidden if self.chance(probability)]
        others = [(.5, self.settings), (.2, self.macros), (.2, self.revisions), (.3, self.pages),
                  (.2, self.states), (.15, self.breaks)]
        return made + [make() for probability, make in others if self.chance(probability)]

    def ranged_notes(self):
        def border():
            return self.one(self.number(), str(self.random.randint(0, 3000)))

        def note():
            return ("<ScriptNote ID=\"%s\" Range=\"%s,%s\" Color=\"#%s\" DateTime=\"%s\""
                    " WriterID=\"%s\" Type=\"%s\" Name=\"n\">"
                    % (self.number(), border(), border(), self.one("FFFF00000000", "", "zz"),
                       self.one("2020-01-01T00:00:00Z", "x", ""), self.number(), self.one("", "x"))
                    + self.content() + "</ScriptNote>")
        return "<ScriptNotes>" + self.many(note, 0, 12) + "</ScriptNotes>"

    def header(self):
        def paragraph():
            return ("<Paragraph Alignment=\"Right\"><DynamicLabel Type=\"%s\"/><Text>%s</Text>"
                    "</Paragraph>" % (self.one("Page #", "Revision Date", "x", ""), self.words()))
        return ("<HeaderAndFooter FooterFirstPage=\"Yes\" HeaderVisible=\"Yes\" StartingPage=\"%s\">"
                "<Header>" % self.number() + self.many(paragraph) + "</Header></HeaderAndFooter>")

    def vocabulary(self):
        names = self.many(lambda: "<Character>" + self.words() + "</Character>")
        return ("<SmartType><Characters>" + names + "</Characters><SceneIntros Separator=\". \">"
                "<SceneIntro>INT</SceneIntro></SceneIntros></SmartType>")

    def alternates(self):
        return ("<AltCollection>"
                + self.many(lambda: "<Alt Id=\"%s\">" % self.number() + self.paragraph() + "</Alt>")
                + "</AltCollection>")

    def unknown(self):
        return ("<Unknown a=\"b\" xmlns:x=\"y\"><x:Deep>" + self.words() + "</x:Deep>"
                + self.paragraph() + "</Unknown>")

    def tags(self):
        return ("<TagData><TagCategories><TagCategory Color=\"#FFFF\" Id=\"x\" Name=\"n\""
                " Number=\"%s\"/></TagCategories><TagDefinitions><TagDefinition Id=\"d\" CatId=\"x\""
                " Label=\"%s\"/></TagDefinitions></TagData>" % (self.number(), self.words()))

    def settings(self):
        def element():
            sides = " ".join("%s=\"%s\"" % (name, self.number()) for name in
                             ("FirstIndent", "LeftIndent", "RightIndent", "SpaceBefore", "Spacing"))
            kind = self.one("Action", "Dialogue", "Character", "General", "Custom", "", "Shot")
            return ("<ElementSettings Type=\"%s\"><FontSpec Font=\"%s\" Size=\"%s\" Style=\"%s\""
                    " Color=\"#0\"/><ParagraphSpec Alignment=\"%s\" %s StartsNewPage=\"No\""
                    " Leading=\"Regular\"/><Behavior PaginateAs=\"%s\" ReturnKey=\"x\""
                    " Shortcut=\"1\"/></ElementSettings>"
                    % (kind, self.one("Courier", ""), self.number(),
                       self.one("", "AllCaps", "Bold", "AllCaps+Underline"),
                       self.one("Left", "Right", "Center", "Full"), sides,
                       self.one("Action", "Scene Heading", "x", "")))
        return self.many(element, 1, 14)

    def macros(self):
        return ("<Macros><Macro Name=\"x\" Text=\"a&#9;b\" Shortcut=\"\"><Alias Confirm=\"No\">"
                "<ActivateIn Element=\"Action\"/></Alias></Macro></Macros>")

    def revisions(self):
        def revision():
            return ("<Revision ID=\"%s\" Mark=\"*\" Color=\"#%s\" Name=\"r\"/>"
                    % (self.number(), self.one("FFFF00000000", "xyz", "", "0", "0" * 18)))
        return ("<Revisions ActiveSet=\"%s\" Location=\"7.75\">" % self.number()
                + self.many(revision) + "</Revisions>")

    def pages(self):
        if self.is_plain:
            return "<PageLayout><PageSize Width=\"8.50\" Height=\"11.00\"/></PageLayout>"
        return ("<PageLayout BottomMargin=\"%s\" TopMargin=\"%s\" BackgroundColor=\"#%s\""
                " HeaderMargin=\"%s\" BreakDialogueAndActionAtSentences=\"Yes\"><PageSize"
                " Width=\"%s\" Height=\"%s\"/></PageLayout>"
                % (self.number(), self.number(), self.one("FFFFFFFFFFFF", "0"), self.number(),
                   self.number(), self.number()))

    def states(self):
        return ("<TextState Scaling=\"%s\" Selection=\"%s,%s\" ShowInvisibles=\"Yes\"/>"
                "<SplitState ActivePanel=\"%s\" SplitMode=\"None\"><ScriptPanel"
                " DisplayMode=\"Page\"/></SplitState>"
                % (self.number(), self.number(), self.number(), self.number()))

    def breaks(self):
        return ("<MoresAndContinueds><FontSpec Font=\"x\" Size=\"%s\"/><DialogueBreaks"
                " DialogueBottom=\"(&gt;x)\" DialogueTop=\"\u00a0\" BottomOfPage=\"Yes\"/>"
                "</MoresAndContinueds>" % self.number())

    def scene_properties(self):
        def inner():
            return self.one("", "<Summary>" + self.content() + "</Summary>",
                            "<SceneArcBeats><CharacterArcBeat Name=\"x\"><Paragraph><Text>"
                            + self.words() + "</Text></Paragraph></CharacterArcBeat>"
                            "</SceneArcBeats>")
        return ("<SceneProperties Length=\"%s\" Page=\"%s\" Title=\"%s\" Color=\"#FF\">"
                % (self.one("1 3/8", "x", "9/0", "1e308/8", ""), self.number(), self.number())
                + self.hidden(inner) + "</SceneProperties>")
