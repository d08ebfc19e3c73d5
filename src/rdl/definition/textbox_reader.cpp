// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/textbox_reader.h"

#include "rdl/definition/group_reader.h"
#include "rdl/definition/style_reader.h"

namespace rdl {
namespace {

TextRun ReadRun(Context& context, const XmlElement& element, const std::string& where) {
    TextRun run;
    run.value = context.ChildText(element, "Value", where);
    run.style = ReadStyle(context, element, where);
    run.action = ReadAction(context, element, where);
    run.toolTip = context.ChildExpr(element, "ToolTip", where);
    run.html = EqualNoCase(element.ChildText("MarkupType"), "HTML");
    return run;
}

Paragraph::List ReadListStyle(Context& context, const XmlElement& element, const std::string& where) {
    const std::string word = element.ChildText("ListStyle");
    if (EqualNoCase(word, "Bulleted")) {
        return Paragraph::List::Bulleted;
    }
    if (EqualNoCase(word, "Numbered")) {
        return Paragraph::List::Numbered;
    }
    if (!word.empty() && !EqualNoCase(word, "None")) {
        context.Fail(element, where, "\"" + word + "\" is no kind of list");
    }
    return Paragraph::List::None;
}

Paragraph ReadParagraph(Context& context, const XmlElement& element, const std::string& where) {
    Paragraph paragraph;
    if (const XmlElement* runs = element.Child("TextRuns")) {
        for (const XmlElement& child : runs->children) {
            if (child.name == "TextRun") {
                paragraph.runs.push_back(ReadRun(context, child, where));
            }
        }
    }
    paragraph.style = ReadStyle(context, element, where);
    paragraph.leftIndent = context.ChildExpr(element, "LeftIndent", where);
    paragraph.rightIndent = context.ChildExpr(element, "RightIndent", where);
    paragraph.hangingIndent = context.ChildExpr(element, "HangingIndent", where);
    paragraph.spaceBefore = context.ChildExpr(element, "SpaceBefore", where);
    paragraph.spaceAfter = context.ChildExpr(element, "SpaceAfter", where);
    paragraph.listStyle = ReadListStyle(context, element, where);
    paragraph.listLevel = context.Number(element, "ListLevel", where, 0, 100, 0);
    return paragraph;
}

// Returns the one paragraph of an older text box. The box keeps the style too: each property is read where it
// is used.
Paragraph ParagraphOfValue(Context& context, const XmlElement& element, const Textbox& textbox,
                           const std::string& where) {
    TextRun run;
    run.value = context.ChildText(element, "Value", where);
    run.style = RunPart(textbox.style);
    Paragraph paragraph;
    paragraph.style = ParagraphPart(textbox.style);
    paragraph.runs.push_back(std::move(run));
    return paragraph;
}

}  // namespace

ItemPtr ReadTextbox(Context& context, const XmlElement& element, Extent container) {
    auto textbox = std::make_unique<Textbox>();
    ReadBasics(context, element, *textbox, container);
    const std::string where = PlaceOf(element);
    textbox->canGrow = context.Flag(element, "CanGrow", where);
    textbox->canShrink = context.Flag(element, "CanShrink", where);
    textbox->keepTogether = context.Flag(element, "KeepTogether", where);
    textbox->hideDuplicates = element.ChildText("HideDuplicates");
    if (const XmlElement* paragraphs = element.Child("Paragraphs")) {
        for (const XmlElement& child : paragraphs->children) {
            if (child.name == "Paragraph") {
                textbox->paragraphs.push_back(ReadParagraph(context, child, where));
            }
        }
    } else {
        textbox->paragraphs.push_back(ParagraphOfValue(context, element, *textbox, where));
    }
    return textbox;
}

}  // namespace rdl
