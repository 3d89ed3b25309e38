// The language of scripts: what each piece of it gives.

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/scripting/Script.h"
#include "QuillboxCommon/scripting/ScriptEvaluator.h"
#include "support/RecordingScriptHost.h"

namespace qb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string described(const ScriptDescriptor& descriptor) {
  if (descriptor.stringValue) return *descriptor.stringValue;
  std::string items;
  for (const ScriptDescriptor& item : descriptor.items) {
    if (!items.empty()) items += "|";
    items += described(item);
  }
  return "[" + items + "]";
}

/// The result of `source` in one line, or its error.
std::string resultOf(const std::string& source, ScriptHost& host) {
  Script script(source);
  const ScriptOutcome outcome = script.executeAndReturnError(host);
  if (!outcome.succeeded()) {
    return stringWithFormat("%ld: %@", outcome.error.longForKey(NSAppleScriptErrorNumber),
                            outcome.error.objectForKey(NSAppleScriptErrorMessage).stringValue());
  }
  return outcome.descriptor ? described(*outcome.descriptor) : "nothing";
}

struct Row {
  const char* source;
  const char* result;
};

std::ostream& operator<<(std::ostream& out, const Row& row) { return out << row.source; }

class LanguageTest : public testing::TestWithParam<Row> {};

TEST_P(LanguageTest, Gives) {
  RecordingScriptHost host;
  host.outputs = {{"two lines", "a\nb\n"}, {"number", "42\n"}};
  EXPECT_EQ(resultOf(GetParam().source, host), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(Values, LanguageTest,
                         testing::Values(Row{"", "nothing"},                     //
                                         Row{"\r\r", "nothing"},                 //
                                         Row{"\"a\"", "a"},                      //
                                         Row{"\"\"", ""},                        //
                                         Row{"12", "12"},                        //
                                         Row{"-12", "-12"},                      //
                                         Row{"1.5", "1.5"},                      //
                                         Row{"2.0", "2.0"},                      //
                                         Row{"1E3", "1000.0"},                   //
                                         Row{"true", "true"},                    //
                                         Row{"TRUE", "true"},                    //
                                         Row{"{}", "[]"},                        //
                                         Row{"{1, \"b\", {}}", "[1|b|[]]"},      //
                                         Row{"the \"a\"", "a"},                  //
                                         Row{"return", "nothing"},               //
                                         Row{"\"a\" & return & \"b\"", "a\rb"},  //
                                         Row{"tab & space & quote & linefeed", "\t \"\n"},
                                         Row{"\"\\\"\\\\\\r\\n\\t\"", "\"\\\r\n\t"},  //
                                         Row{"\"two\rlines\"", "two\rlines"},         //
                                         Row{"99999999999999999999", "1e+20"}));

INSTANTIATE_TEST_SUITE_P(Operators, LanguageTest,
                         testing::Values(Row{"\"a\" & \"b\" & 3", "ab3"},      //
                                         Row{"1 & \"a\"", "[1|a]"},            //
                                         Row{"{1} & 2 & {3}", "[1|2|3]"},      //
                                         Row{"\"a\" & {1, 2}", "a12"},         //
                                         Row{"1 + 2 * 3", "7"},                //
                                         Row{"(1 + 2) * 3", "9"},              //
                                         Row{"7 / 2", "3.5"},                  //
                                         Row{"7 div 2", "3"},                  //
                                         Row{"-7 div 2", "-3"},                //
                                         Row{"7 mod 2", "1"},                  //
                                         Row{"2 ^ 3", "8.0"},                  //
                                         Row{"10 - 2 - 3", "5"},               //
                                         Row{"\"2\" + 1", "3"},                //
                                         Row{"1.5 + 1.5", "3.0"},              //
                                         Row{"1 = 1.0", "true"},               //
                                         Row{"\"A\" is \"a\"", "true"},        //
                                         Row{"1 is not 2", "true"},            //
                                         Row{"1 \u2260 1", "false"},           //
                                         Row{"1 /= 2", "true"},                //
                                         Row{"1 is equal to 1", "true"},       //
                                         Row{"1 is not equal to 1", "false"},  //
                                         Row{"1 equals 2", "false"},           //
                                         Row{"1 does not equal 2", "true"},    //
                                         Row{"1 < 2 and 2 \u2264 2 and 3 \u2265 3 and 4 > 3",
                                             "true"},                                          //
                                         Row{"1 is less than 2", "true"},                      //
                                         Row{"1 is greater than or equal to 2", "false"},      //
                                         Row{"\"a\" < \"B\"", "true"},                         //
                                         Row{"not true or true", "true"},                      //
                                         Row{"not (true or true)", "false"},                   //
                                         Row{"not 1 = 2", "true"},                             //
                                         Row{"false and missingName", "false"},                //
                                         Row{"true or missingName", "true"},                   //
                                         Row{"{1, 2, 3} contains 2", "true"},                  //
                                         Row{"{1, 2, 3} contains {2, 3}", "true"},             //
                                         Row{"{1, 2, 3} contains {}", "true"},                 //
                                         Row{"\"Quillbox\" contains \"BOX\"", "true"},         //
                                         Row{"\"Quillbox\" does not contain \"x\"", "false"},  //
                                         Row{"2 is in {1, 2}", "true"},                        //
                                         Row{"2 is not in {1, 2}", "false"},                   //
                                         Row{"\"Quillbox\" starts with \"quill\"", "true"},    //
                                         Row{"\"Quillbox\" ends with \"quill\"", "false"},     //
                                         Row{"\"42\" as integer", "42"},                       //
                                         Row{"2.6 as integer", "3"},                           //
                                         Row{"3 as text", "3"},                                //
                                         Row{"3 as string & 1", "31"},                         //
                                         Row{"\"1.5\" as number", "1.5"},                      //
                                         Row{"3 as real", "3.0"},                              //
                                         Row{"\"a\" as list", "[a]"},                          //
                                         Row{"\"true\" as boolean", "true"},                   //
                                         Row{"{1, 2} as text", "12"}));

INSTANTIATE_TEST_SUITE_P(
    Parts, LanguageTest,
    testing::Values(Row{"length of {1, 2}", "2"},                                //
                    Row{"{1, 2}'s length", "2"},                                 //
                    Row{"length of \"h\u00e9llo\"", "5"},                        //
                    Row{"count of {1, 2, 3}", "3"},                              //
                    Row{"count {1}", "1"},                                       //
                    Row{"item 2 of {5, 6}", "6"},                                //
                    Row{"item -1 of {5, 6}", "6"},                               //
                    Row{"{5, 6}'s item 1", "5"},                                 //
                    Row{"first item of {5, 6}", "5"},                            //
                    Row{"last item of {5, 6}", "6"},                             //
                    Row{"every item of {5, 6}", "[5|6]"},                        //
                    Row{"items of {5, 6}", "[5|6]"},                             //
                    Row{"items 1 through 2 of {5, 6, 7}", "[5|6]"},              //
                    Row{"items 2 thru -1 of {5, 6, 7}", "[6|7]"},                //
                    Row{"items 3 thru 2 of {5, 6, 7}", "[6|7]"},                 //
                    Row{"items 2 thru (length of {1, 2}) of {5, 6, 7}", "[6]"},  //
                    Row{"item 1 of item 2 of {1, {8, 9}}", "8"},                 //
                    Row{"item (1 + 1) of {5, 6}", "6"},                          //
                    Row{"rest of {1, 2, 3}", "[2|3]"},                           //
                    Row{"reverse of {1, 2, 3}", "[3|2|1]"},                      //
                    Row{"character 2 of \"h\u00e9llo\"", "\u00e9"},              //
                    Row{"characters 2 thru 3 of \"abcd\"", "[b|c]"},             //
                    Row{"text 2 thru 3 of \"abcd\"", "bc"},                      //
                    Row{"words of \"one, two\"", "[one|two]"},                   //
                    Row{"word 2 of \"one, two\"", "two"},                        //
                    Row{"paragraphs of \"a\\r\\nb\\nc\"", "[a|b|c]"},            //
                    Row{"paragraph 2 of (do shell script \"two lines\")", "b"},  //
                    Row{"(do shell script \"number\") as integer", "42"},        //
                    Row{"do shell script \"two lines\"", "a\rb"},                //
                    Row{"ASCII character 65", "A"},                              //
                    Row{"(ASCII character 13) & \"x\"", "\rx"}));

INSTANTIATE_TEST_SUITE_P(
    Statements, LanguageTest,
    testing::Values(
        Row{"set x to 5", "5"},                                                      //
        Row{"set x to 5\rx + 1", "6"},                                               //
        Row{"set X to 5\nx", "5"},                                                   //
        Row{"set |end| to 5\r\n|end|", "5"},                                         //
        Row{"copy 5 to x\rx", "5"},                                                  //
        Row{"set {a, b} to {1, 2, 3}\rb & a", "[2|1]"},                              //
        Row{"set {a, {b}} to {1, {2}}\rb", "2"},                                     //
        Row{"set x to 5\rresult + 1", "6"},                                          //
        Row{"if 1 = 1 then return \"yes\"\r\"no\"", "yes"},                          //
        Row{"if 1 = 2 then return \"yes\"\r\"no\"", "no"},                           //
        Row{"if 1 = 2 then return \"yes\" else return \"no\"", "no"},                //
        Row{"if 1 = 2 then\r1\relse if 2 = 2 then\r2\relse\r3\rend if", "2"},        //
        Row{"if 1 = 2 then\r1\relse\r3\rend", "3"},                                  //
        Row{"set x to 0\rrepeat 3 times\rset x to x + 1\rend repeat\rx", "3"},       //
        Row{"set x to 0\rrepeat while x < 5\rset x to x + 2\rend repeat\rx", "6"},   //
        Row{"set x to 0\rrepeat until x > 5\rset x to x + 2\rend repeat\rx", "6"},   //
        Row{"set x to 0\rrepeat with i from 1 to 4\rset x to x + i\rend\rx", "10"},  //
        Row{"set x to \"\"\rrepeat with i from 4 to 1 by -2\rset x to x & i\rend\rx", "42"},
        Row{"set x to \"\"\rrepeat with i in {7, 8}\rset x to x & i\rend repeat\rx", "78"},
        Row{"set x to 0\rrepeat\rset x to x + 1\rif x = 3 then exit repeat\rend\rx", "3"},
        Row{"try\rmissingName\ron error message number n\rmessage & n\rend try",
            "The variable missingName is not defined.-2753"},                     //
        Row{"try\rerror \"mine\" number 7\ron error number n\rn\rend try", "7"},  //
        Row{"try\rmissingName\rend try\r1", "1"},                                 //
        Row{"error \"mine\"", "-2700: mine"},                                     //
        Row{"error \"mine\" number 7", "7: mine"},                                //
        Row{"-- nothing\r# nothing\r(* no (* thing *) *) 1 -- one", "1"},         //
        Row{"set x to 1 + \u00ac\r2\rx", "3"},                                    //
        Row{"set x to 1 + \u00ac -- goes on\r\n2\rx", "3"},                       //
        Row{"\ufeff1", "1"}));

INSTANTIATE_TEST_SUITE_P(
    Handlers, LanguageTest,
    testing::Values(Row{"twice(4)\ron twice(n)\rreturn n * 2\rend twice", "8"},
                    Row{"on twice(n)\rn * 2\rend\rtwice(4)", "8"},
                    Row{"on f()\rreturn\rend f\rf()", "nothing"},
                    Row{"to f(a, b)\ra & b\rend f\rf(\"x\", \"y\")", "xy"},
                    Row{"on f(n)\rif n = 0 then return 0\rn + f(n - 1)\rend f\rf(20)", "210"},
                    Row{"set x to 1\ron f()\rx\rend f\rf()",
                        "-2753: The variable x is not defined."},
                    Row{"property x : 1\ron f()\rset x to x + 1\rend f\rf()\rf()\rx", "3"},
                    Row{"global x\rset x to 1\rf()\ron f()\rglobal x\rset x to x + 1\rend f", "2"},
                    Row{"property x : 1\ron f()\rlocal x\rset x to 5\rend f\rf()\rx", "1"},
                    Row{"on f()\rlocal x\rx\rend f\rf()", "-2753: The variable x is not defined."},
                    Row{"on run\r3\rend run", "3"},
                    Row{"on f(a)\rend f\rf()", "-1704: f takes 1 parameters, not 0."},
                    Row{"g()", "-1708: Can\u2019t continue g."}));

INSTANTIATE_TEST_SUITE_P(
    Errors, LanguageTest,
    testing::Values(
        Row{"foo", "-2753: The variable foo is not defined."},
        Row{"foo bar", "-2741: Expected end of line but found \u201cbar\u201d."},
        Row{"keystroke \"a\"", "-2741: Expected end of line but found string."},
        Row{"tell application \"X\"", "-2741: Expected expression but found end of script."},
        Row{"tell application \"X\"\rend if",
            "-2741: Expected \u201ctell\u201d but found "
            "\u201cif\u201d."},
        Row{"set x", "-2741: Expected \u201cto\u201d but found end of line."},
        Row{"set 5 to 6", "-2741: Expected variable name but found \u201cto\u201d."},
        Row{"set x to", "-2741: Expected expression but found end of line."},
        Row{"if 1 = 1", "-2741: Expected \u201cthen\u201d but found end of line."},
        Row{"(1", "-2741: Expected \u201c)\u201d but found end of line."},
        Row{"{1, ", "-2741: Expected expression but found end of line."},
        Row{"\"a", "-2741: Expected \u201c\"\u201d but found end of script."},
        Row{"\"a\\b\"", "-2741: Expected \u201c\"\u201d but found unknown token."},
        Row{"1 + @", "-2741: Expected expression but found unknown token."},
        Row{"every menu item", "-2741: Expected class name but found \u201cmenu\u201d."},
        Row{"exists 5", "-2741: Expected end of line but found number."},
        Row{"12ab", "-2741: Expected end of line but found unknown token."},
        Row{"(* never ends", "-2741: Expected \u201c*)\u201d but found end of script."},
        Row{"1 \u00ac 2", "-2741: Expected end of line after \u201c\u00ac\u201d."},
        Row{"on f()\rend g", "-2741: Expected end of line but found \u201cg\u201d."},
        Row{"on f()\rend f\ron f()\rend f", "-2741: The handler f is there twice."},
        Row{"3 as window", "-2741: Expected class name but found \u201cwindow\u201d."},
        Row{"1 / 0", "-2701: Can\u2019t divide 1 by zero."},
        Row{"1 mod 0", "-2701: Can\u2019t divide 1 by zero."},
        Row{"\"a\" + 1", "-1700: Can\u2019t make \"a\" into type number."},
        Row{"if \"a\" then return 1", "-1700: Can\u2019t make \"a\" into type boolean."},
        Row{"\"x\" as integer", "-1700: Can\u2019t make \"x\" into type integer."},
        Row{"item 3 of {1, \"b\"}", "-1728: Can\u2019t get item 3 of {1, \"b\"}."},
        Row{"item 0 of {1}", "-1728: Can\u2019t get item 0 of {1}."},
        Row{"items 3 thru 2 of {1, 2}", "-1728: Can\u2019t get items 3 thru 2 of {1, 2}."},
        Row{"length of 5", "-1728: Can\u2019t get length of 5."},
        Row{"rest of {}", "-1728: Can\u2019t get rest of {}."},
        Row{"set {a, b} to {1}", "-1728: Can\u2019t get item 2 of {1}."},
        Row{"ASCII character 200", "-1728: Can\u2019t get ASCII character 200."},
        Row{"tell 5 to activate", "-1708: 5 takes no commands."},
        Row{"activate", "-1708: me is no application."},
        Row{"repeat with i from 1 to 2 by 0\rend", "-1704: Can\u2019t repeat by 0."},
        Row{"on f()\rf()\rend f\rf()", "-2706: Stack overflow."},
        Row{"repeat\rend repeat", "-1712: The script does not come to an end."},
        Row{"set s to \"0123456789\"\rrepeat 30 times\rset s to s & s\rend",
            "-108: Out of memory."},
        Row{"set l to {}\rrepeat 100 times\rset l to {l}\rend",
            "-2706: A list holds too many lists in each other."}));

TEST(ScriptTest, DeepNestingIsAnErrorNotACrash) {
  RecordingScriptHost host;
  const auto repeated = [](const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i) all += text;
    return all;
  };
  const std::string tooDeep = "-2741: The script is nested too deeply.";
  for (const char* const opening : {"(", "{", "not ", "- ", "application ", "item 1 of ",
                                    "if 1 = 1 then ", "tell me to ", "f("}) {
    EXPECT_EQ(resultOf(repeated(opening, 20'000), host), tooDeep) << opening;
  }
  EXPECT_EQ(resultOf("item " + repeated("- ", 20'000), host), tooDeep);
  EXPECT_EQ(resultOf("1" + repeated(" & 1", 20'000), host), tooDeep);
  EXPECT_EQ(resultOf("x" + repeated("'s length", 20'000), host), tooDeep);
  EXPECT_EQ(resultOf(repeated("if true then\r", 20'000), host), tooDeep);
}

TEST(ScriptTest, ASourceOfMoreThanAMebibyteIsRefused) {
  RecordingScriptHost host;
  EXPECT_EQ(resultOf(std::string((1U << 20) + 1, ' '), host), "-108: The script is too long.");
}

TEST(ScriptTest, AnErrorNamesTheApplicationThatReportedIt) {
  RecordingScriptHost host;
  host.failingCall = "type 'a'";
  host.failure = {ScriptErrorGeneral, "The keyboard is gone.", ""};
  Script script("tell application \"System Events\" to keystroke \"a\"");
  EXPECT_EQ(script.executeAndReturnError(host).error,
            PropertyList::dictionary(
                {{"NSAppleScriptErrorMessage", "System Events got an error: The keyboard is gone."},
                 {"NSAppleScriptErrorBriefMessage", "The keyboard is gone."},
                 {"NSAppleScriptErrorNumber", -2700}}));
}

TEST(ScriptTest, NothingOfAScriptIsDoneThatCannotBeRead) {
  RecordingScriptHost host;
  resultOf("do shell script \"first\"\r)", host);
  EXPECT_THAT(host.calls, IsEmpty());
}

TEST(ScriptTest, AScriptCanBeRunAgain) {
  RecordingScriptHost host;
  Script script("property n : 0\rset n to n + 1\rdo shell script n");
  script.executeAndReturnError(host);
  script.executeAndReturnError(host);
  EXPECT_THAT(host.calls, ElementsAre("shell 1", "shell 1"));
}

TEST(ScriptTest, LimitsCanBeTightened) {
  RecordingScriptHost host;
  Script script("1 + 1");
  const ScriptOutcome outcome = script.executeAndReturnError(host, {.steps = 3});
  EXPECT_EQ(outcome.error.longForKey(NSAppleScriptErrorNumber), ScriptErrorTimeout);
}

TEST(ScriptTest, AListIsADescriptorOfItsItems) {
  RecordingScriptHost host;
  Script script("{\"a\", {1}}");
  const ScriptDescriptor list = *script.executeAndReturnError(host).descriptor;
  EXPECT_EQ(list.stringValue, std::nullopt);
  ASSERT_EQ(list.numberOfItems(), 2U);
  EXPECT_EQ(list.descriptorAtIndex(1), (ScriptDescriptor{"a", {}}));
  EXPECT_EQ(list.descriptorAtIndex(2), (ScriptDescriptor{std::nullopt, {{"1", {}}}}));
}

}  // namespace
}  // namespace qb::test
