// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/code_fixture.h"

namespace rdl::expr {
namespace {

TEST(ReportCode, FunctionsTakeArgumentsAndReturn) {
    const std::string code = R"(
        Public Function Twice(ByVal n As Integer) As Integer
            Return n * 2
        End Function
        Function Greet(name As String, Optional mark As String = "!") As String
            Greet = "Hello " & name & mark
        End Function)";
    EXPECT_EQ(ShowWith(code, "=Code.Twice(21)"), "42");
    EXPECT_EQ(ShowWith(code, "=code.twice(2.6)"), "6");
    EXPECT_EQ(ShowWith(code, "=Code.Greet(\"Ann\")"), "Hello Ann!");
    EXPECT_EQ(ShowWith(code, "=Code.Greet(Fields!Name.Value, \"?\") & \".\""), "Hello Smith?.");
}

TEST(ReportCode, IfTakesTheFirstBranchThatHolds) {
    const std::string code = R"(
        Function Grade(n As Double) As String
            If n >= 90 Then
                Return "A"
            ElseIf n >= 50 Then ' a remark
                Return "B"
            Else
                Return "C"
            End If
        End Function
        Function Line(n As Integer) As String
            If n > 0 Then Line = "plus" Else If n < 0 Then Line = "minus" Else Line = "zero"
        End Function)";
    EXPECT_EQ(ShowWith(code, "=Code.Grade(90) & Code.Grade(50) & Code.Grade(49.9)"), "ABC");
    EXPECT_EQ(ShowWith(code, "=Code.Line(1) & Code.Line(-1) & Code.Line(0)"), "plusminuszero");
}

TEST(ReportCode, SelectComparesListsRangesAndRelations) {
    const std::string code = R"(
        Function Kind(n As Object) As String
            Select Case n
                Case 1, 3, 5
                    Kind = "odd"
                Case 10 To 20
                    Kind = "teen"
                Case Is > 100
                    Kind = "large"
                Case Else
                    Kind = "other"
            End Select
        End Function)";
    EXPECT_EQ(ShowWith(code, "=Code.Kind(3) & Code.Kind(20) & Code.Kind(101) & Code.Kind(7)"),
              "oddteenlargeother");
}

TEST(ReportCode, LoopsCountStepAndLeave) {
    const std::string code = R"(
        Function Sum(n As Integer) As Integer
            Dim total As Integer = 0
            For i As Integer = 1 To n
                If i Mod 2 = 0 Then Continue For
                If i > 7 Then Exit For
                total += i
            Next
            Return total
        End Function
        Function Down() As String
            Dim s As String
            For i = 10 To 1 Step -3
                s &= i & " "
            Next i
            Return s
        End Function
        Function Powers(limit As Integer) As Integer
            Dim n As Integer = 1
            While n < limit
                n = n * 2
            End While
            Do
                n = n + 1
            Loop Until n Mod 10 = 0
            Do While n < 1000
                n = n * 10
                If n = 700 Then Exit Do
            Loop
            Return n
        End Function
        Function Each(list As Object) As String
            For Each item As Object In list
                Each = Each & "<" & item & ">"
            Next
        End Function)";
    EXPECT_EQ(ShowWith(code, "=Code.Sum(100)"), "16");
    EXPECT_EQ(ShowWith(code, "=Code.Down()"), "10 7 4 1 ");
    EXPECT_EQ(ShowWith(code, "=Code.Powers(50)"), "700");
    EXPECT_EQ(ShowWith(code, "=Code.Each(Parameters!Years.Value)"), "<2023><2024>");
}

TEST(ReportCode, FunctionsCallThemselvesAndOneAnother) {
    const std::string code = R"(
        Function Fact(n As Integer) As Integer
            If n <= 1 Then Return 1
            Return n * Fact(n - 1)
        End Function
        Function Outer(n As Integer) As Integer
            Return Later(n) + 1
        End Function
        Function Later(n As Integer) As Integer
            Return n * 10
        End Function)";
    EXPECT_EQ(ShowWith(code, "=Code.Fact(10)"), "3628800");
    EXPECT_EQ(ShowWith(code, "=Code.Outer(4)"), "41");
}

TEST(ReportCode, VariablesOfTheReportKeepTheirValues) {
    const std::string code = R"(
        Dim total As Double = 100
        Public Const Rate As Double = 0.5
        Public Function Add(n As Double) As Double
            total = total + n * Rate
            Return total
        End Function
        Function Ticket() As Integer
            Static last As Integer = 5
            last += 1
            Return last
        End Function)";
    EXPECT_EQ(ShowWith(code, "=Code.Add(10) & \" \" & Code.Add(10) & \" \" & Code.total & \" \" & Code.Rate"),
              "105 110 110 0.5");
    EXPECT_EQ(ShowWith(code, "=Code.Ticket() & Code.Ticket()"), "67");
    TestContext context;
    CodeLibrary library(code, context);
    context.code = &library;
    TestEnvironment environment;
    const auto program = Compile("=Code.Add(10)", "Here", context);
    program->Evaluate(environment);
    library.Reset();
    EXPECT_EQ(program->Evaluate(environment).AsReal(), 105);
}

TEST(ReportCode, ListsHaveElements) {
    const std::string code = R"(
        Function Spell(n As Integer) As String
            Dim words() As String = {"zero", "one", "two"}
            Return words(n)
        End Function
        Function Squares() As String
            Dim a(3) As Integer
            For i = 0 To 3
                a(i) = i * i
            Next
            ReDim Preserve a(4)
            a(4) += 7
            Return Join(a, ",")
        End Function)";
    EXPECT_EQ(ShowWith(code, "=Code.Spell(2)"), "two");
    EXPECT_EQ(ShowWith(code, "=Code.Spell(3)").substr(0, 6), "#Error");
    EXPECT_EQ(ShowWith(code, "=Code.Squares()"), "0,1,4,9,7");
}

TEST(ReportCode, ReferencesAndRestArguments) {
    const std::string code = R"(
        Sub Swap(ByRef a As Integer, ByRef b As Integer)
            Dim c As Integer = a
            a = b : b = c
        End Sub
        Function Swapped() As String
            Dim x As Integer = 1, y As Integer = 2
            Swap(x, y)
            Return x & y
        End Function
        Function Largest(ParamArray numbers() As Double) As Double
            Dim best As Double = numbers(0)
            For Each n As Double In numbers
                best = IIf(n > best, n, best)
            Next
            Return best
        End Function)";
    EXPECT_EQ(ShowWith(code, "=Code.Swapped()"), "21");
    EXPECT_EQ(ShowWith(code, "=Code.Largest(3, 9, 4)"), "9");
}

TEST(ReportCode, FaultsAreCaughtOrShown) {
    const std::string code = R"(
        Function Safe(n As Object) As String
            Try
                Return CInt(n).ToString()
            Catch ex As Exception
                Return "none"
            Finally
                n = 0
            End Try
        End Function
        Function Bare(n As Object) As Integer
            Return CInt(n)
        End Function)";
    EXPECT_EQ(ShowWith(code, "=Code.Safe(\"7\") & Code.Safe(\"x\")"), "7none");
    EXPECT_EQ(ShowWith(code, "=Code.Bare(\"x\")").substr(0, 6), "#Error");
}

TEST(ReportCode, ParametersCanBeRead) {
    EXPECT_EQ(
        ShowWith("Function R() As String\nReturn Report.Parameters!Region.Value\nEnd Function", "=Code.R()"),
        "North");
}

TEST(ReportCode, EndlessLoopsAndRecursionEnd) {
    const std::string code = R"(
        Function Forever() As Integer
            While True
            End While
        End Function
        Function Deep(n As Integer) As Integer
            Return Deep(n + 1)
        End Function
        Function Grow() As String
            Grow = "x"
            While True
                Grow = Grow & Grow
            End While
        End Function
        Function Caught() As Integer
            While True
                Try
                    Caught = Forever()
                Catch
                End Try
            End While
        End Function)";
    EXPECT_NE(ShowWith(code, "=Code.Forever()").find("too many steps"), std::string::npos);
    EXPECT_NE(ShowWith(code, "=Code.Deep(1)").find("too deeply"), std::string::npos);
    EXPECT_NE(ShowWith(code, "=Code.Grow()").find("too "), std::string::npos);
    EXPECT_NE(ShowWith(code, "=Code.Caught()").find("too many steps"), std::string::npos);
}

TEST(ReportCode, VariablesOfTheReportStaySmall) {
    const std::string code = R"(
        Dim kept As String
        Function Keep(n As Integer) As Integer
            kept = StrDup(n, "x")
            Return Len(kept)
        End Function)";
    EXPECT_EQ(ShowWith(code, "=Code.Keep(1000)"), "1000");
    EXPECT_NE(ShowWith(code, "=Code.Keep(3000000)").find("too large"), std::string::npos);
}

TEST(ReportCode, CallersOfPageNumbersAreKnown) {
    TestContext context;
    const CodeLibrary pages("Function P()\nReturn Report.Globals!PageNumber\nEnd Function", context);
    context.code = &pages;
    EXPECT_TRUE(Compile("=Code.P()", "Here", context)->UsesPageGlobals());
    const CodeLibrary plain("Function P()\nReturn 1\nEnd Function", context);
    context.code = &plain;
    EXPECT_FALSE(Compile("=Code.P()", "Here", context)->UsesPageGlobals());
}

TEST(ReportCode, WhatIsNotKnownNamesItsLine) {
    EXPECT_EQ(CodeRefusal("Function F()\nDim c As New Connection()\nEnd Function").substr(0, 14),
              "Code, line 2: ");
    EXPECT_EQ(CodeRefusal("\n\nClass X\nEnd Class").substr(0, 14), "Code, line 3: ");
    EXPECT_EQ(CodeRefusal("Function F()\nReturn Missing(1)\nEnd Function"),
              "Code, line 2: the name \"Missing\" is not known");
    EXPECT_EQ(CodeRefusal("Function F()\nx = 1\nEnd Function").substr(0, 14), "Code, line 2: ");
    EXPECT_EQ(CodeRefusal("Function F(a)\nReturn 1\nEnd Function\nFunction G()\nReturn F()\nEnd Function")
                  .substr(0, 14),
              "Code, line 5: ");
    EXPECT_NE(CodeRefusal("Function F()\nReturn 1\n"), "accepted");
    EXPECT_NE(CodeRefusal("Function F()\nReturn \"abc\nEnd Function"), "accepted");
    EXPECT_NE(CodeRefusal("Function F()\nIf True Then\nEnd Function"), "accepted");
    EXPECT_NE(CodeRefusal("Const A = 1\nFunction F()\nA = 2\nEnd Function"), "accepted");
    EXPECT_NE(CodeRefusal("Function F()\nReturn Sum(1)\nEnd Function"), "accepted");
    EXPECT_NE(CodeRefusal("Function F()\nReturn Fields!Name.Value\nEnd Function"), "accepted");
}

TEST(ReportCode, NamesThatTheCodeLacksDoNotCompile) {
    EXPECT_THROW(ShowWith("", "=Code.Missing(1)"), Error);
    EXPECT_THROW(ShowWith("Function F(a As Integer)\nReturn a\nEnd Function", "=Code.F()"), Error);
    EXPECT_NE(Refusal("=Code.F()"), "compiled");
}

TEST(Code, FunctionsNeedNoPrefixUnlessABuiltInOneHasTheirName) {
    const std::string code =
        "Function Greeting(name As String) As String\nReturn \"Hello \" & name\nEnd Function\n"
        "Function Left(text As String, count As Integer) As String\nReturn \"own\"\nEnd Function\n"
        "Function vbTab() As String\nReturn \"own\"\nEnd Function\nDim secret = 5";
    EXPECT_EQ(ShowWith(code, "=greeting(\"Ann\") & Code.Greeting(\"!\")"), "Hello AnnHello !");
    EXPECT_EQ(ShowWith(code, "=Left(\"Rome\", 2) & Code.Left(\"Rome\", 2)"), "Roown");
    EXPECT_EQ(ShowWith(code, "=vbTab()"), "\t");
    const auto refusal = [&](const char* source) { return ErrorRaisedBy([&] { ShowWith(code, source); }); };
    EXPECT_EQ(refusal("=Greting(\"Ann\")"),
              "Here: the name \"Greting\" is not known; the nearest is \"Code.greeting\", at character 2");
    EXPECT_EQ(refusal("=secret"), "Here: the name \"secret\" is not known, at character 2");
    // Characters, not bytes.
    EXPECT_EQ(refusal("=\"\u00FC\u4E2D\" & secret"),
              "Here: the name \"secret\" is not known, at character 9");
    EXPECT_EQ(refusal("=\"\u00FC\u4E2D\" & \"x"), "Here: a text has no closing quote, at character 9");
    EXPECT_EQ(
        refusal("=Code.Greting(\"Ann\")"),
        "Here: the code of the report has no function \"greting\"; the nearest is \"Code.greeting\", at "
        "character 7");
    EXPECT_EQ(refusal("=Code.Other(1)"),
              "Here: the code of the report has no function \"other\", at character 7");
}

}  // namespace
}  // namespace rdl::expr
