// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxSkeleton_p.h>

#include <finaldraft/file/FdxLook_p.h>
#include <finaldraft/file/FdxStandards_p.h>
#include <finaldraft/file/FdxText_p.h>

using MVRFinalDraft::ElementSettings;
using MVRFinalDraft::ParagraphAttr;
using MVRFinalDraft::toString;

namespace {

const char head[] = R"xml(<?xml version="1.0" encoding="UTF-8" standalone="no" ?>
<FinalDraft DocumentType="Script" Template="No" Version="5">

  <Content></Content>

  <HeaderAndFooter FooterFirstPage="Yes" FooterVisible="No" HeaderFirstPage="No" HeaderVisible="Yes" StartingPage="1">
    <Header>
      <Paragraph Alignment="Right" FirstIndent="0.00" Leading="Regular" LeftIndent="1.25" RightIndent="-1.25" SpaceBefore="0" Spacing="1" StartsNewPage="No">
        <DynamicLabel AdornmentStyle="0" Font="Courier Final Draft" RevisionID="0" Size="12" Type="Page #"/>
        <Text AdornmentStyle="0" Font="Courier Final Draft" RevisionID="0" Size="12" Style="">.</Text>
      </Paragraph>
    </Header>
    <Footer>
      <Paragraph Alignment="Right" FirstIndent="0.00" Leading="Regular" LeftIndent="1.25" RightIndent="-1.25" SpaceBefore="0" Spacing="1" StartsNewPage="No"/>
    </Footer>
  </HeaderAndFooter>

  <PageLayout BackgroundColor="#FFFFFFFFFFFF" BottomMargin="72" BreakDialogueAndActionAtSentences="Yes" DocumentLeading="Normal" FooterMargin="36" ForegroundColor="#000000000000" HeaderMargin="36" InvisiblesColor="#808080808080" TopMargin="72" UsesSmartQuotes="Yes">
    <PageSize Height="11.00" Width="8.50"/>
  </PageLayout>

  <TextState Scaling="100" Selection="0,0" ShowInvisibles="No"/>

)xml";

const char tail[] = R"xml(  <TitlePage>
    <Content></Content>
  </TitlePage>

  <SmartType>
    <Characters/>
    <Extensions>
      <Extension>(V.O.)</Extension>
      <Extension>(O.S.)</Extension>
      <Extension>(CONT'D)</Extension>
    </Extensions>
    <SceneIntros Separator=". ">
      <SceneIntro>INT</SceneIntro>
      <SceneIntro>EXT</SceneIntro>
      <SceneIntro>I/E</SceneIntro>
    </SceneIntros>
    <Locations/>
    <TimesOfDay Separator=" - ">
      <TimeOfDay>DAY</TimeOfDay>
      <TimeOfDay>NIGHT</TimeOfDay>
    </TimesOfDay>
    <Transitions>
      <Transition>CUT TO:</Transition>
      <Transition>FADE IN:</Transition>
      <Transition>FADE OUT.</Transition>
    </Transitions>
  </SmartType>

  <MoresAndContinueds>
    <FontSpec AdornmentStyle="0" Font="Courier Final Draft" RevisionID="0" Size="12" Style=""/>
    <DialogueBreaks AutomaticCharacterContinueds="Yes" BottomOfPage="Yes" DialogueBottom="(MORE)" DialogueTop="(CONT'D)" TopOfNext="Yes"/>
    <SceneBreaks ContinuedNumber="No" SceneBottom="(CONTINUED)" SceneBottomOfPage="No" SceneTop="CONTINUED:" SceneTopOfNext="No"/>
  </MoresAndContinueds>

  <ScriptNotes/>

</FinalDraft>
)xml";

QByteArray settingsElement(const QByteArray &type, const QByteArray &fontSpec,
                           const QByteArray &paragraphSpec, const QByteArray &behavior)
{
    return "  <ElementSettings Type=\"" + type + "\">\n    <FontSpec " + fontSpec
        + "/>\n    <ParagraphSpec " + paragraphSpec + " StartsNewPage=\"No\"/>\n    <Behavior "
        + behavior + "/>\n  </ElementSettings>\n";
}

QByteArray fontSpec(const QByteArray &font, const QByteArray &size, const QByteArray &style)
{
    return "AdornmentStyle=\"0\" Background=\"#FFFFFFFFFFFF\" Color=\"#000000000000\" Font=\""
        + font + "\" RevisionID=\"0\" Size=\"" + size + "\" Style=\"" + style + '"';
}

// Each with a blank in front.
QByteArray shapeAttributes(const ParagraphAttr &shape, double margin)
{
    ParagraphAttr nothing; // so that all is said
    nothing.alignment = {};
    nothing.firstIndent = nothing.leftIndent = nothing.rightIndent = nothing.spacing = -1e6;
    nothing.spaceBefore = -1;
    nothing.startsNewPage = shape.startsNewPage;
    QByteArray text;
    const QVector<FdxAttribute> attributes = fdxShapeAttributes(shape, nothing, margin);
    for (const FdxAttribute &attribute : attributes)
        text += QByteArray(" ") + attribute.name + "=\"" + attribute.value + '"';
    return text;
}

QByteArray behaviorOf(const ElementSettings &settings, const QByteArray &shortcut)
{
    return "PaginateAs=\"" + toString(settings.paginateAs).toLatin1() + "\" ReturnKey=\""
        + toString(settings.returnKey).toLatin1() + "\" Shortcut=\"" + shortcut + '"';
}

}

QByteArray fdxSkeleton()
{
    QByteArray settings;
    int shortcut = 0;
    const QVector<ElementSettings> standards = fdxStandardSettings();
    for (const ElementSettings &standard : standards) {
        settings += settingsElement(
            standard.type.toLatin1(),
            fontSpec("Courier Final Draft", "12", toString(standard.fontSpec.style).toLatin1()),
            "Leading=\"Regular\"" + shapeAttributes(standard.paragraphSpec, 0.0),
            behaviorOf(standard, QByteArray::number(shortcut++)));
    }
    return head + settings + '\n' + tail;
}

QByteArray fdxElementSettings(const MVRScriptElement &element, double margin)
{
    const FdxLook look = FdxLook().with(element.charFormat());
    ParagraphAttr shape;
    shape.fromBlockFormat(element.blockFormat(), 0.0);
    const ElementSettings standard = fdxStandardSettings(element.name(), MVRFinalDraft::Action);
    return settingsElement(
        fdxEscapedValue(element.name()),
        fontSpec(fdxEscapedValue(look.font), QByteArray::number(look.size), look.styleText()),
        "Leading=\"Regular\"" + shapeAttributes(shape, margin), behaviorOf(standard, QByteArray()));
}
