// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/fixture.h"

namespace rdl::expr {
namespace {

TEST(ExpressionNames, FieldsAreReachedInEveryForm) {
    EXPECT_EQ(Show("=Fields!Name.Value"), "Smith");
    EXPECT_EQ(Show("=fields!NAME.value"), "Smith");
    EXPECT_EQ(Show("=Fields(\"Name\").Value"), "Smith");
    EXPECT_EQ(Show("=Fields.Item(\"Name\").Value"), "Smith");
    EXPECT_EQ(Show("=Fields.Name.Value"), "Smith");
    EXPECT_EQ(Show("=Fields!Name"), "Smith");
    EXPECT_EQ(Show("=\"Dear \" & {Name}"), "Dear Smith");
    EXPECT_EQ(Show("=Fields!Gone.IsMissing & Fields!Name.IsMissing"), "TrueFalse");
    EXPECT_EQ(Show("=Fields!Undeclared.IsMissing"), "True");
    EXPECT_EQ(Show("=Fields(\"Na\" & \"me\").Value"), "Smith");
    EXPECT_EQ(Show("=Fields(\"No\" & \"ne\").Value"), "#Error");
    EXPECT_EQ(Show("=Fields!Name.Value.ToUpper().Length"), "5");
}

TEST(ExpressionNames, ParametersHaveValuesLabelsAndCounts) {
    EXPECT_EQ(Show("=Parameters!Region.Value"), "North");
    EXPECT_EQ(Show("=Parameters!Region.Label"), "The north");
    EXPECT_EQ(Show("=Parameters!Region.Count"), "1");
    EXPECT_EQ(Show("=Parameters!Region.IsMultiValue"), "False");
    EXPECT_EQ(Show("=Parameters!Years.Count"), "2");
    EXPECT_EQ(Show("=Parameters!Years.IsMultiValue"), "True");
    EXPECT_EQ(Show("=Parameters!Years.Value(1)"), "2024");
    EXPECT_EQ(Show("=Parameters!Years.Label(0)"), "y23");
    EXPECT_EQ(Show("=Parameters!Years.Value(2)"), "#Error");
    EXPECT_EQ(Show("=Join(Parameters!Years.Value, \", \")"), "2023, 2024");
    EXPECT_EQ(Show("=Parameters(\"Region\").Value"), "North");
}

TEST(ExpressionNames, ParametersAndGlobalsMayStandInBraces) {
    EXPECT_EQ(Show("={?Region}"), "North");
    EXPECT_EQ(Show("=\"In \" & { ? region } & {?Region}.Length"), "In North5");
    EXPECT_EQ(Show("={?Years}(1)"), "2024");
    EXPECT_EQ(Show("=Sum({?Region}, \"Sales\")"), "North");
    EXPECT_EQ(Show("={@PageNumber} & \" of \" & {@TotalPages} & {@UserID}"), "3 of 12ann");
    EXPECT_EQ(Show("=Join({{?Region}, \"x\"})"), "North x");
    TestContext context;
    EXPECT_TRUE(Compile("={@PageNumber}", "Here", context)->UsesPageGlobals());
    EXPECT_EQ(Refusal("={?Nope}"), "Here: there is no parameter \"Nope\", at character 4");
    EXPECT_EQ(Refusal("={@Nope}"), "Here: there is no Globals!Nope, at character 4");
    EXPECT_EQ(Refusal("={?Region"), "Here: {?Region has no closing }, at character 4");
    EXPECT_EQ(Refusal("=1 & {?Region & 2"), "Here: {?Region has no closing }, at character 8");
    EXPECT_EQ(Refusal("={?}"), "Here: the name of a parameter was expected instead of \"}\", at character 4");
    EXPECT_EQ(Refusal("=1 @ 2"), "Here: the character \"@\" has no meaning here, at character 4");
}

TEST(ExpressionNames, GlobalsAndTheOtherCollections) {
    EXPECT_EQ(Show("=Globals!PageNumber & \" of \" & Globals!TotalPages"), "3 of 12");
    EXPECT_EQ(Show("=Globals!RenderFormat.Name"), "PDF");
    EXPECT_EQ(Show("=User!UserID"), "ann");
    EXPECT_EQ(Show("=ReportItems!Total.Value"), "item Total");
    EXPECT_EQ(Show("=Variables!Rate.Value"), "variable Rate");
    EXPECT_EQ(Show("=DataSets!Other.RowCount"), "7");
    EXPECT_EQ(Show("=DataSources!Db.Type"), "SQLITE");
    EXPECT_EQ(Refusal("=DataSources!Db.Password"),
              "Here: \"Db\" has no \"Password\" that could be asked for, at character 17");
    EXPECT_EQ(Show("=Me.Value & Value"), "meme");
    EXPECT_EQ(Show("=InScope(\"ByYear\") & InScope(\"x\")"), "TrueFalse");
    EXPECT_EQ(Show("=Level()"), "2");
    EXPECT_EQ(Show("=Lookup(Fields!Name.Value, Fields!Id.Value, Fields!Label.Value, \"Other\")"),
              "from Other");
}

TEST(ExpressionNames, UnknownNamesDoNotCompile) {
    EXPECT_EQ(Refusal("=Fields!Nope.Value"),
              "Here: there is no field \"Nope\" in data set \"Sales\", at character 9");
    EXPECT_EQ(Refusal("=1 + Foo(2)"), "Here: the name \"Foo\" is not known, at character 6");
    EXPECT_EQ(Refusal("=Parameters!Nope.Value"), "Here: there is no parameter \"Nope\", at character 13");
    EXPECT_EQ(Refusal("=Fields!Name.Value.Shout()"),
              "Here: a value has no member \"Shout\", at character 20");
    EXPECT_NE(Refusal("=Globals!Nope"), "compiled");
    EXPECT_NE(Refusal("=Sum(Fields!Amount.Value, \"Nope\")"), "compiled");
    EXPECT_NE(Refusal("=Sum(Fields!Id.Value)"), "compiled");
    EXPECT_NE(Refusal("=Left(\"a\")"), "compiled");
}

TEST(ExpressionNames, ConstantsMayHaveEmptyBrackets) {
    EXPECT_EQ(Show("=\"a\" & VBCRLF() & \"b\""), "a\r\nb");
    EXPECT_EQ(Show("=vbTab & vbtab( ) & VbTab"), "\t\t\t");
    EXPECT_EQ(Show("=ControlChars.CrLf()"), "\r\n");
    EXPECT_EQ(Refusal("=1 & vbTab(2)"),
              "Here: \"vbTab\" is a constant, which takes no arguments, at character 6");
}

TEST(ExpressionNames, BracketsMayFollowAPropertyButNotAConstantOrAGlobal) {
    EXPECT_EQ(Show("=Fields!Name.Value()"), "Smith");
    EXPECT_EQ(Show("=Fields!Name.Value().ToUpper()"), "SMITH");
    EXPECT_EQ(Show("=Parameters!Region.Value() & Parameters!Years.Count()"), "North2");
    EXPECT_EQ(Refusal("=True()"), "Here: \"True\" takes no brackets, at character 2");
    EXPECT_EQ(Refusal("=IIf(true(), 1, 2)"), "Here: \"true\" takes no brackets, at character 6");
    EXPECT_EQ(Refusal("=Nothing()"), "Here: \"Nothing\" takes no brackets, at character 2");
    EXPECT_EQ(Refusal("=Globals!PageNumber()"), "Here: \"PageNumber\" takes no brackets, at character 10");
    EXPECT_EQ(Refusal("=User!UserID()"), "Here: \"UserID\" takes no brackets, at character 7");
}

TEST(ExpressionNames, TheNameOfAFieldAloneShowsHowItIsAskedFor) {
    EXPECT_EQ(Refusal("=Sum(Name)"),
              "Here: the name \"Name\" is not known; the nearest is \"Fields!Name.Value\", at character 6");
    EXPECT_EQ(Refusal("=[Name]"),
              "Here: the name \"Name\" is not known; the nearest is \"Fields!Name.Value\", at character 2");
}

TEST(ExpressionNames, AnUnknownNameShowsTheNearestKnownOne) {
    EXPECT_EQ(Refusal("=Lefft(\"a\", 1)"),
              "Here: the name \"Lefft\" is not known; the nearest is \"left\", at character 2");
    EXPECT_EQ(Refusal("=Coutn(1)"),
              "Here: the name \"Coutn\" is not known; the nearest is \"count\", at character 2");
    EXPECT_EQ(Refusal("=Math.Abbs(1)"),
              "Here: the name \"Math.Abbs\" is not known; the nearest is \"math.abs\", at character 2");
    EXPECT_EQ(Refusal("=vbCrLg"),
              "Here: the name \"vbCrLg\" is not known; the nearest is \"vbcrlf\", at character 2");
    EXPECT_EQ(Refusal("=\"a\".ToUper()"),
              "Here: a value has no member \"ToUper\"; the nearest is \"toupper\", at character 6");
    EXPECT_EQ(Refusal("=Foo.ToString()"), "Here: the name \"Foo\" is not known, at character 2");
    EXPECT_EQ(Refusal("=" + std::string(60000, 'x')).substr(0, 16), "Here: the name \"");
}

TEST(ExpressionNames, AScopeWithoutQuotesIsShownWithThem) {
    EXPECT_EQ(Refusal("=Sum(Fields!Amount.Value, ByYear)"),
              "Here: the name of a scope is a text in quotes: \"ByYear\", at character 27");
    EXPECT_EQ(Refusal("=InScope(ByYear)"),
              "Here: the name of a scope is a text in quotes: \"ByYear\", at character 10");
}

TEST(ExpressionNames, ANameOfACustomAssemblySaysThatItIsNotLoaded) {
    TestContext context;
    context.assemblies = "Contoso.Reports, Contoso.Money";
    const std::string why =
        "; the report names custom assemblies (Contoso.Reports, Contoso.Money), which are not loaded";
    const auto refusal = [&](const char* source) {
        return ErrorRaisedBy([&] { Compile(source, "Here", context); });
    };
    EXPECT_EQ(refusal("=Contoso.Reports.Tools.Shorten(1)"),
              "Here: the name \"Contoso.Reports.Tools.Shorten\" is not known" + why + ", at character 2");
    EXPECT_EQ(refusal("=Code.Money.Text(1)"),
              "Here: the report has no code of its own" + why + ", at character 7");
    EXPECT_EQ(refusal("=New Contoso.Thing()"),
              "Here: \"Contoso\" cannot be made with New" + why + ", at character 6");
}

TEST(ExpressionNames, BrokenSourcesDoNotCompile) {
    for (const char* source :
         {"=", "=1 +", "=(1", "=1)", "=\"abc", "=1 2", "=#abc#", "=IIf(True, 1)", "=Switch(True)", "=@",
          "=Fields!", "=Sum(", "=Sum()", "=Sum(1,2,3,4)", "=,", "=a.b.c", "=\"ab\"c", "=New Thing()"}) {
        EXPECT_EQ(Refusal(source).substr(0, 6), "Here: ") << source;
        EXPECT_EQ(Refusal(source).find('\''), std::string::npos) << source;
    }
}

TEST(ExpressionNames, DepthAndLengthAreBounded) {
    EXPECT_NE(Refusal("=" + std::string(5000, '(') + "1" + std::string(5000, ')')), "compiled");
    EXPECT_NE(Refusal("=" + std::string(5000, '-') + "1"), "compiled");
    EXPECT_NE(Refusal("=\"" + std::string(70000, 'x') + "\""), "compiled");
    std::string sum = "=1";
    std::string chain = "=\"\"";
    std::string members = "=\"a\"";
    for (int i = 0; i < 5000; ++i) {
        sum += "+1";
        chain += "&\"a\"";
        members += ".Trim()";
    }
    EXPECT_NE(Refusal(sum), "compiled");
    EXPECT_NE(Refusal(members), "compiled");
    EXPECT_EQ(Show(chain), std::string(5000, 'a'));
    EXPECT_EQ(Show("=StrDup(4000000, \"a\") & StrDup(4000000, \"a\")"), "#Error");
    EXPECT_EQ(Show("=Replace(StrDup(10000, \"a\"), \"a\", StrDup(1000000, \"b\"))"), "#Error");
}

TEST(ExpressionAggregates, KindsScopesAndIdsAreKept) {
    TestContext context;
    const auto program = Compile(
        "=Sum(Fields!Amount.Value) + RunningValue(Fields!Amount.Value, Count, \"ByYear\") + "
        "RowNumber(Nothing) + CountRows(\"Other\")",
        "Here", context);
    const auto& calls = program->Aggregates();
    ASSERT_EQ(calls.size(), 4u);
    EXPECT_EQ(calls[0]->kind, AggregateKind::Sum);
    EXPECT_EQ(calls[0]->argument->PlainField(), 1);
    EXPECT_EQ(calls[1]->kind, AggregateKind::RunningValue);
    EXPECT_EQ(calls[1]->running, AggregateKind::Count);
    EXPECT_EQ(calls[1]->scope, "ByYear");
    EXPECT_EQ(calls[2]->kind, AggregateKind::RowNumber);
    EXPECT_EQ(calls[2]->scope, "");
    EXPECT_EQ(calls[3]->scope, "Other");
    EXPECT_EQ(calls[3]->argument, nullptr);
    EXPECT_EQ(calls[3]->id, 3);
    EXPECT_EQ(context.nextAggregateId, 4);
    Compile("=Max(1)", "Here", context);
    EXPECT_EQ(context.nextAggregateId, 5);
}

TEST(ExpressionAggregates, ArgumentsBelongToTheScopesDataSet) {
    TestContext context;
    const auto program =
        Compile("=First(Fields!Label.Value, \"Other\") & Fields!Name.Value", "Here", context);
    EXPECT_EQ(program->Aggregates()[0]->argument->PlainField(), 1);
    EXPECT_NE(Refusal("=First(Fields!Name.Value, \"Other\")"), "compiled");
    EXPECT_EQ(context.dataSet, "Sales");
}

TEST(ExpressionAggregates, NestedOnesAreAllNoted) {
    TestContext context;
    const auto program =
        Compile("=Sum(Max(Fields!Amount.Value, \"ByYear\"), \"Sales\", Recursive)", "Here", context);
    ASSERT_EQ(program->Aggregates().size(), 2u);
    EXPECT_EQ(program->Aggregates()[0]->kind, AggregateKind::Max);
    EXPECT_TRUE(program->Aggregates()[1]->recursive);
}

TEST(ExpressionProgram, SaysWhatItIs) {
    TestContext context;
    EXPECT_EQ(Compile("=Fields!Day.Value", "", context)->PlainField(), 2);
    EXPECT_EQ(Compile("=Fields!Day.Value & \"\"", "", context)->PlainField(), -1);
    ASSERT_NE(Compile("=-5", "", context)->Constant(), nullptr);
    EXPECT_EQ(Compile("=-5", "", context)->Constant()->AsInteger(), -5);
    EXPECT_EQ(Compile("=Now()", "", context)->Constant(), nullptr);
    EXPECT_TRUE(Compile("=\"p\" & Globals!PageNumber", "", context)->UsesPageGlobals());
    EXPECT_FALSE(Compile("=Globals!ReportName", "", context)->UsesPageGlobals());
    EXPECT_TRUE(Compile("=Sum(Globals!TotalPages)", "", context)->UsesPageGlobals());
    EXPECT_TRUE(Compile("=ReportItems!A.Value", "", context)->UsesReportItems());
}

TEST(ExpressionLiterals, AreReadInEveryForm) {
    EXPECT_EQ(Show("=&HFF & \" \" & &O17 & \" \" & 5L & \" \" & 1.5D & \" \" & 2F & \" \" & 1E3"),
              "255 15 5 1.5 2 1000");
    EXPECT_EQ(Show("=&HFFFFFFFF"), "-1");
    EXPECT_EQ(Show("=\"say \"\"hi\"\"\""), "say \"hi\"");
    EXPECT_EQ(Show("=\"x\"c"), "x");
    EXPECT_EQ(Show("=#12/31/2023#.Year"), "2023");
    EXPECT_EQ(Show("=#2023-12-31 10:30:00 PM#.Hour"), "22");
    EXPECT_EQ(Show("=.5 + 1"), "1.5");
    EXPECT_EQ(Show("={1, 2, 3}.Length"), "3");
    EXPECT_EQ(Show("=New DateTime(2024, 2, 29).DayOfYear"), "60");
    EXPECT_EQ(Show("=New DateTime(2023, 2, 29)"), "#Error");
    EXPECT_EQ(Show("=vbCrLf"), "\r\n");
    EXPECT_EQ(Show("=Microsoft.VisualBasic.Constants.vbTab"), "\t");
    EXPECT_EQ(Show("=1 + _\n 2 ' a remark"), "3");
    EXPECT_EQ(Show("=1 + ' of ' + 2"), "1 of 2");
    EXPECT_EQ(Show("=7 % 4"), "3");
    EXPECT_EQ(Show("=1 != 2"), "True");
    EXPECT_EQ(Show("=\"a\"&Hour(#10:30:00#)"), "a10");
}

}  // namespace
}  // namespace rdl::expr
