// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/code_fixture.h"

namespace rdl::expr {
namespace {

// The result of a function F with this body.
std::string Body(const std::string& body) {
    return ShowWith("Function F()\n" + body + "\nEnd Function", "=Code.F()");
}

TEST(CodeObjects, StringBuilderGathersText) {
    EXPECT_EQ(Body(R"(Dim sb As New System.Text.StringBuilder()
        For i As Integer = 1 To 3
            sb.Append(i).Append(",")
        Next
        sb.Length = sb.Length - 1
        sb.Insert(0, "[")
        sb.AppendFormat("{0}{1:N1}", "]", 2)
        sb.Replace("2", "two")
        Return sb.ToString() & sb.Length)"),
              "[1,two,3]two.014");
    EXPECT_EQ(Body(R"(Dim sb = New StringBuilder("a")
        sb.AppendLine("b")
        sb.Remove(0, 1)
        Return sb.ToString())"),
              "b\r\n");
    EXPECT_EQ(Body("Dim sb As New StringBuilder\nsb.Length = 5"),
              "#Error Only the length of a StringBuilder can be set, to less than it is");
}

TEST(CodeObjects, ListsGrow) {
    EXPECT_EQ(Body(R"(Dim list As New List(Of String)
        list.Add("pear")
        list.Add("apple")
        list.Insert(1, "fig")
        list.AddRange({"kiwi", "lime"})
        list.Remove("lime")
        list.RemoveAt(0)
        list.Sort()
        list(0) = UCase(list(0))
        Dim text As String = list.Count & list.Contains("fig") & list.IndexOf("kiwi")
        For Each s As String In list
            text &= " " & s
        Next
        Return text & " " & Join(list.ToArray(), "-"))"),
              "3True2 APPLE fig kiwi APPLE-fig-kiwi");
    EXPECT_EQ(Body("Dim a As New ArrayList\na.Add(1)\nReturn a(1)"), "#Error An index lies outside its list");
    EXPECT_EQ(Body("Dim a As New ArrayList\na.Reverse()\na.RemoveAt(0)"),
              "#Error An index lies outside its list");
    EXPECT_EQ(Body("Dim a As New ArrayList\nDim b As New ArrayList\na.Add(b)"),
              "#Error System.Collections.ArrayList can hold neither lists nor objects");
}

TEST(CodeObjects, StackAndQueueGiveFromTheirEnds) {
    EXPECT_EQ(Body(R"(Dim s As New Stack
        Dim q As New Queue(Of Integer)
        For i As Integer = 1 To 3
            s.Push(i)
            q.Enqueue(i)
        Next
        Return s.Pop() & s.Peek() & s.Count & q.Dequeue() & q.Peek() & q.Count)"),
              "322122");
    EXPECT_EQ(Body("Dim s As New Stack\nReturn s.Pop()"), "#Error System.Collections.Stack is empty");
}

TEST(CodeObjects, DictionariesFindByKey) {
    EXPECT_EQ(Body(R"(Dim d As New Dictionary(Of String, Integer)
        d.Add("b", 1)
        d("a") = 5
        d("a") += 2
        d.Item("c") = 9
        d.Remove("b")
        Dim text As String = d.Count & d.ContainsKey("A") & d.ContainsKey("a") & d.ContainsValue(9)
        For Each pair As KeyValuePair(Of String, Integer) In d
            text &= " " & pair.Key & pair.Value
        Next
        For Each k In d.Keys
            text &= k
        Next
        Return text)"),
              "2FalseTrueTrue a7 c9ac");
    EXPECT_EQ(Body("Dim d As New Dictionary(Of String, String)\nd.Add(1, 2)\nd.Add(1, 3)"),
              "#Error The key is there already");
    EXPECT_EQ(Body("Dim d As New Dictionary(Of String, String)\nReturn d(1)"), "#Error The key is not there");
    EXPECT_EQ(Body("Dim d As New Hashtable\nReturn d(1) Is Nothing"), "True");
    EXPECT_EQ(Body("Dim d As New SortedList\nd(2) = \"b\"\nd(1) = \"a\"\nReturn Join(d.Values, \",\")"),
              "a,b");
    EXPECT_EQ(Body("Dim d As New Hashtable\nd.Count = 1"),
              "#Error System.Collections.Hashtable cannot be "
              "changed so");
}

TEST(CodeObjects, AreSharedByAllWhoHoldThem) {
    EXPECT_EQ(ShowWith(R"(
        Private seen As New System.Collections.Hashtable
        Sub Note(ByVal table As Hashtable, ByVal key As String)
            table(key) = table(key) + 1
        End Sub
        Function F() As Integer
            Note(seen, "a")
            Note(seen, "a")
            Return seen("a")
        End Function)",
                       "=Code.F() & Code.F()"),
              "24");
}

TEST(CodeObjects, AreBounded) {
    EXPECT_EQ(Body("Dim a As New ArrayList\nDo\na.Add(StrDup(1000, \"x\"))\nLoop"),
              "#Error System.Collections.ArrayList becomes too large");
    EXPECT_EQ(Body("Dim sb As New StringBuilder\nDo\nsb.Append(StrDup(1000, \"x\"))\nLoop"),
              "#Error A StringBuilder becomes too large");
    EXPECT_EQ(Body(R"(Dim a As New ArrayList
        For i As Integer = 1 To 20000
            a.Add(i)
        Next
        Do
            a.Sort()
        Loop)"),
              "#Error The code of the report takes too many steps");
    EXPECT_EQ(Body(R"(Do
            Dim a As New ArrayList
            a.Add(StrDup(900000, "x"))
        Loop)"),
              "#Error The expression makes too much text");
}

TEST(CodeObjects, ShowTheirTypeAndKnowTheirMembers) {
    EXPECT_EQ(Body("Return New Hashtable"), "System.Collections.Hashtable");
    EXPECT_EQ(Body("Return TypeName(New Hashtable) & (TypeOf (New ArrayList) Is ArrayList)"),
              "HashtableTrue");
    EXPECT_EQ(Body("Dim d As New Hashtable\nd.Push(1)"),
              "#Error System.Collections.Hashtable has no such member \"push\"");
    EXPECT_EQ(Body("Dim d As Hashtable\nd.Clear()"), "#Error Nothing has no members");
    EXPECT_EQ(CodeRefusal("Dim d As New Thing"), "Code, line 1: \"Thing\" cannot be made with New");
}

TEST(CodeStatements, WithGivesItsObjectToLeadingPoints) {
    EXPECT_EQ(Body(R"(Dim d As New Hashtable
        With d
            .Add("a", 1)
            .Item("b") = .Item("a") + 1
            With New StringBuilder("x")
                .Append("y")
                d("c") = .ToString()
            End With
        End With
        Return d("b") & d("c"))"),
              "2xy");
    EXPECT_NE(CodeRefusal("Function F()\n.Add(1)\nEnd Function"), "accepted");
}

TEST(CodeStatements, TryParseGivesItsVariableTheValue) {
    EXPECT_EQ(Body(R"(Dim n As Integer = 3
        Dim d As Date
        Dim text As String = Integer.TryParse("12", n) & n
        text &= Integer.TryParse("x", n) & n
        Return text & Date.TryParse("1/2/2024", d) & d.Day & Double.TryParse("1.5", n) & n)"),
              "True12False0True2True2");
    EXPECT_NE(CodeRefusal("Function F()\nReturn Thing.TryParse(1, 2)\nEnd Function"), "accepted");
}

TEST(CodeStatements, ArraysAreSortedInTheirVariable) {
    EXPECT_EQ(Body(R"(Dim a() As Integer = {3, 1, 2}
        Array.Sort(a)
        Dim b = a
        Array.Reverse(a)
        Return Join(a, "") & Join(b, ""))"),
              "321123");
    EXPECT_NE(CodeRefusal("Function F()\nArray.Sort({1})\nEnd Function"), "accepted");
}

TEST(CodeStatements, ArrayElementsChangeInPlaceButNotInCopies) {
    EXPECT_EQ(Body(R"(Dim sieve(16000) As Boolean
        Dim count As Integer
        For i As Integer = 2 To 16000
            If Not sieve(i) Then
                count += 1
                For k As Integer = i + i To 16000 Step i
                    sieve(k) = True
                Next
            End If
        Next
        Return count)"),
              "1862");
    EXPECT_EQ(Body("Dim a() = {1, 2}\nDim b = a\na(0) = 9\nReturn Join(a, \"\") & Join(b, \"\")"), "9212");
}

TEST(CodeStatements, CatchSeesTheMessageThatWasThrown) {
    EXPECT_EQ(Body(R"(Try
            Throw New ArgumentException("too much")
        Catch ex As ArgumentException
            Return ex.Message
        End Try)"),
              "too much");
}

TEST(CodeStatements, CatchTakesTheFirstClauseThatHolds) {
    const std::string code = R"(Function F(x)
        Try
            Return CInt(x)
        Catch ex As Exception When x = "b"
            Return "b: "
        Catch ex As InvalidCastException
            Return "other"
        Finally
            x = 0
        End Try
        End Function)";
    EXPECT_EQ(ShowWith(code, "=Code.F(5) & Code.F(\"b\") & Code.F(\"c\")"), "5b: other");
    EXPECT_EQ(
        ShowWith("Function F()\nTry\nThrow \"x\"\nCatch When False\nEnd Try\nEnd Function", "=Code.F()"),
        "#Error x");
}

TEST(CodeStatements, AParameterOfTheReportCanBeGivenAsAWhole) {
    const std::string code = R"(Public Function Shown(ByVal parameter As Parameter) As String
        If parameter.IsMultiValue Then
            Shown = "Multivalue:"
            For i As Integer = 0 To parameter.Count - 1
                Shown &= " " & parameter.Value(i)
            Next
        Else
            Shown = "Single value: " & parameter.Value
        End If
        End Function)";
    EXPECT_EQ(ShowWith(code, "=Code.Shown(Parameters!Years)"), "Multivalue: 2023 2024");
    EXPECT_EQ(ShowWith(code, "=Code.Shown(Parameters!Region)"), "Single value: North");
}

TEST(CodeStatements, OnInitSetsTheVariablesUp) {
    EXPECT_EQ(ShowWith(R"(Dim Public start As Integer
        Protected Overrides Sub OnInit()
            start = 7
        End Sub)",
                       "=Code.start"),
              "7");
}

TEST(CodeStatements, NullableVariablesKeepNothing) {
    EXPECT_EQ(Body("Dim x As Integer?\nDim y As Nullable(Of Date)\nReturn x.HasValue & (y Is Nothing)"),
              "FalseTrue");
    EXPECT_EQ(Body("Dim x As Integer? = 5\nReturn x.HasValue & x.Value"), "True5");
}

TEST(CodeStatements, NewObjectsMayBeginFilled) {
    EXPECT_EQ(Body("Dim l As New List(Of String) From {\"a\", \"b\"}\nReturn Join(l.ToArray(), \"+\")"),
              "a+b");
    EXPECT_EQ(
        Body("Dim d = New Dictionary(Of String, Integer) From {{\"a\", 1}, {\"b\", 2}}\nReturn d(\"b\")"),
        "2");
    EXPECT_EQ(Body("Dim d = New Hashtable From {{1, 2}, {1, 3}}"), "#Error The key is there already");
    EXPECT_NE(CodeRefusal("Dim d As New Hashtable From {{1, 2, 3}}"), "accepted");
}

TEST(CodeStatements, WhatIsNotKnownIsRefusedWithItsLine) {
    EXPECT_EQ(CodeRefusal("Function F()\nDim a(2, 3) As Integer\nEnd Function"),
              "Code, line 2: arrays of several dimensions are not known");
    EXPECT_EQ(CodeRefusal("\nClass A\nEnd Class"),
              "Code, line 2: only functions, variables and constants can stand here, not \"Class\"");
    EXPECT_EQ(CodeRefusal("Function F()\nReturn System.IO.File.Exists(\"x\")\nEnd Function"),
              "Code, line 2: the name \"IO.File.Exists\" is not known");
    EXPECT_EQ(CodeRefusal("#Region \"x\"\nFunction F()\nEnd Function\n#End Region"), "accepted");
}

}  // namespace
}  // namespace rdl::expr
