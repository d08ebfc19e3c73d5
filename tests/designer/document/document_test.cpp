// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/document.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace designer {
namespace {

TEST(Document, MakesAndUndoesSteps) {
    Document document("<a><b>1</b></a>");
    EXPECT_FALSE(document.Undo());
    EXPECT_FALSE(document.Redo());
    document.Apply("Two", {{6, 1, "22", {}}});
    document.Apply("Three", {{3, 0, "<c/>", {}}, {12, 0, " ", {}}});
    EXPECT_EQ(document.Text(), "<a><c/><b>22</b> </a>");
    EXPECT_EQ(document.UndoName(), "Three");
    EXPECT_TRUE(document.Undo());
    EXPECT_EQ(document.Text(), "<a><b>22</b></a>");
    EXPECT_EQ(document.UndoName(), "Two");
    EXPECT_EQ(document.RedoName(), "Three");
    EXPECT_TRUE(document.Undo());
    EXPECT_EQ(document.Text(), "<a><b>1</b></a>");
    EXPECT_EQ(document.UndoName(), "");
    EXPECT_TRUE(document.Redo());
    EXPECT_TRUE(document.Redo());
    EXPECT_EQ(document.Text(), "<a><c/><b>22</b> </a>");
    EXPECT_TRUE(document.Undo());
    document.Apply("Other", {{3, 0, "<d/>", {}}});
    EXPECT_EQ(document.RedoCount(), 0u);
    EXPECT_EQ(document.UndoCount(), 2u);
}

TEST(Document, KeepsIdsThroughEditsUndoAndRedo) {
    Document document("<a><b/><c><d/></c><e/></a>");
    const ElementId c = document.Find(document.Root(), "c"), d = document.Find(c, "d");
    const ElementId e = document.Find(document.Root(), "e");
    document.Apply("Open", {{3, 4, "<b><x/></b>", {}}});
    EXPECT_EQ(document.Find(document.Root(), "c"), c);
    EXPECT_EQ(document.Find(document.Root(), "e"), e);
    const ElementId x = document.Find(document.Root(), "b/x");
    document.Apply("Remove", {{document.Text().find("<c>"), 11, {}, {}}});
    EXPECT_FALSE(document.Has(c));
    EXPECT_FALSE(document.Has(d));
    EXPECT_THROW(document.Name(d), EditError);
    EXPECT_TRUE(document.Undo());
    EXPECT_EQ(document.Find(document.Root(), "c/d"), d);
    EXPECT_TRUE(document.Undo());
    EXPECT_FALSE(document.Has(x));
    EXPECT_TRUE(document.Redo());
    EXPECT_EQ(document.Find(document.Root(), "b/x"), x);
    EXPECT_EQ(document.Name(x), "x");
    EXPECT_EQ(document.Find(document.Root(), "e"), e);
}

TEST(Document, RefusesAnEditThatIsNotWellFormedAndChangesNothing) {
    Document document("<a><b/></a>");
    const std::uint64_t revision = document.Revision();
    EXPECT_THROW(document.Apply("Bad", {{4, 1, "", {}}}), SourceFlaw);
    EXPECT_THROW(document.Apply("Bad", {{5, 1, "", {}}, {3, 1, "", {}}}), std::logic_error);
    EXPECT_THROW(document.Apply("Bad", {{5, 100, "", {}}}), std::logic_error);
    EXPECT_EQ(document.Text(), "<a><b/></a>");
    EXPECT_EQ(document.Revision(), revision);
    EXPECT_EQ(document.UndoCount(), 0u);
    EXPECT_EQ(document.Name(document.Find(document.Root(), "b")), "b");
}

TEST(Document, AGroupIsOneStepAndAnErrorTakesItBack) {
    Document document("<a/>");
    {
        const StepGroup group(document, "Both");
        document.Apply("One", {{2, 0, " b='1'", {}}});
        const StepGroup inner(document, "Inner");
        document.Apply("Two", {{2, 0, " c='1'", {}}});
    }
    EXPECT_EQ(document.Text(), "<a c='1' b='1'/>");
    EXPECT_EQ(document.UndoCount(), 1u);
    EXPECT_EQ(document.UndoName(), "Both");
    try {
        const StepGroup group(document, "Fails");
        document.Apply("One", {{2, 0, " d='1'", {}}});
        throw std::runtime_error("no");
    } catch (const std::runtime_error&) {
    }
    EXPECT_EQ(document.Text(), "<a c='1' b='1'/>");
    EXPECT_EQ(document.UndoCount(), 1u);
    { const StepGroup group(document, "Nothing"); }
    EXPECT_EQ(document.UndoCount(), 1u);
    EXPECT_TRUE(document.Undo());
    EXPECT_EQ(document.Text(), "<a/>");
}

TEST(Document, StepsWithOneKeyAreOneStepUntilSomethingElseHappens) {
    Document document("<a>0</a>");
    const auto type = [&document](const std::string& digit) {
        const StepGroup group(document, "Type", "typing");
        document.Apply("", {{3, 1, digit, {}}});
    };
    type("1");
    type("2");
    EXPECT_EQ(document.UndoCount(), 1u);
    EXPECT_TRUE(document.Undo());
    EXPECT_EQ(document.Text(), "<a>0</a>");
    EXPECT_TRUE(document.Redo());
    EXPECT_EQ(document.Text(), "<a>2</a>");
    type("3");
    EXPECT_EQ(document.UndoCount(), 2u);
    document.MarkSaved();
    type("4");
    EXPECT_EQ(document.UndoCount(), 3u);
}

TEST(Document, KnowsWhetherItIsModified) {
    Document document("<a>0</a>");
    EXPECT_FALSE(document.IsModified());
    document.Apply("One", {{3, 1, "1", {}}});
    EXPECT_TRUE(document.IsModified());
    document.MarkSaved();
    EXPECT_FALSE(document.IsModified());
    document.Undo();
    EXPECT_TRUE(document.IsModified());
    document.Redo();
    EXPECT_FALSE(document.IsModified());
    document.Undo();
    document.Apply("Other", {{3, 1, "2", {}}});
    EXPECT_TRUE(document.IsModified());
}

}  // namespace
}  // namespace designer
