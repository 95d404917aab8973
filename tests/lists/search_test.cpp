#include "lists/record_search.h"
#include "lists_fixture.h"

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

struct SearchTest : ListsFixture {
    GridLists::Outcome search(const char* kind, const QString& text) {
        return lists.startSearch(dates, QString::fromLatin1(kind), text);
    }
};

// Each line carries "qz" plus its own word in exactly one kind's columns; most of them columns the grid does
// not show.
TEST_F(SearchTest, eachKindSearchesItsOwnColumns) {
    writeLines(u"Record/2406.vrf"_s,
               {handLine({{1, "240601000001"}, {80, "qzmail@x.org"}}),          // e-mail: ANY TEXT only
                handLine({{1, "240601000002"}, {715, "qzorg@firm.com"}}),       // org e-mail
                handLine({{1, "240601000003"}, {180, "QZTOWN"}}),               // town
                handLine({{1, "240601000004"}, {69, "QZ12CAR"}}),               // car registration
                handLine({{1, "240601000005"}, {525, "QZ DEPT"}}),              // department
                handLine({{1, "240601000006"}, {504, "QZ CATEGORY"}}),          // category
                handLine({{1, "240601000007"}, {829, "QZ BUILDING"}}),          // location
                handLine({{1, "240601000008"}, {130, "QZREF"}}),                // our ref
                handLine({{1, "240601000009"}, {812, "QZ PAGER"}}),             // visiting pager
                handLine({{1, "240601000010"}, {14, "Qzra"}, {31, "Smith"}})}); // name
    select(15, "JUNE", "2024");
    const std::pair<const char*, const char*> expected[] = {
        {"ORGANISATION", "240601000002"},
        {"HOME ADDRESS", "240601000003"},
        {"CAR REGISTRATION", "240601000004"},
        {"DEPARTMENT", "240601000005"},
        {"CATEGORY", "240601000006"},
        {"BUILDING/LOCATION", "240601000007"},
        {"REFERENCE NO", "240601000008"},
        {"VISITING/REPORTING TO", "240601000009"},
        {"NAME", "240601000010"},
    };
    for (const auto& [kind, regNo] : expected) {
        EXPECT_EQ(search(kind, u"qz"_s), GridLists::Outcome::Listed) << kind;
        EXPECT_EQ(column(0), QStringList{QString::fromLatin1(regNo)}) << kind;
    }
    EXPECT_EQ(search("ANY TEXT", u"Qz"_s), GridLists::Outcome::Listed);
    EXPECT_EQ(lists.table().listedCount(), 10);
    EXPECT_EQ(search("ANY TEXT", u"QZMAIL"_s), GridLists::Outcome::Listed);
    EXPECT_EQ(column(0), QStringList{u"240601000001"_s});
    EXPECT_EQ(desk.state.listMode, ListMode::Search);
    EXPECT_EQ(desk.state.ListedCount, 1);
    EXPECT_EQ(lists.table().rowColour(1), QColor(0xE0, 0xFF, 0xFF));
    EXPECT_TRUE(desk.prompter.messages().isEmpty());
}

TEST_F(SearchTest, nameFoldsBlanksAndMatchesPartsOfWordsInAnyCase) {
    writeLines(u"Record/2406.vrf"_s,
               {handLine({{1, "240601000001"}, {14, "John"}, {31, "SMITH"}, {1072, "0815"}, {1100, "1200"}}),
                handLine({{1, "240601000002"}, {14, "Ann"}, {31, "Smithson"}}),
                handLine({{1, "240601000003"}, {14, "Bo"}, {31, "Goldsmith"}}),
                handLine({{1, "240601000004"}, {14, "Smi"}, {31, "Th"}}),
                handLine({{1, "240601000005"}, {14, "J\xD6RG"}, {31, "M\xDCLLER"}})});
    select(15, "JUNE", "2024");
    search("NAME", u"smith"_s);
    EXPECT_EQ(column(0), (QStringList{u"240601000001"_s, u"240601000002"_s, u"240601000003"_s}));
    // The first booked time of the month; none shows empty.
    EXPECT_EQ(cell(0, 12), u"08:15");
    EXPECT_EQ(cell(1, 12), QString());

    // First name, one blank, last name.
    for (const auto& [text, regNo] :
         {std::pair{u"  John   Smith "_s, u"240601000001"_s}, std::pair{u"smi th"_s, u"240601000004"_s},
          std::pair{u"jörg mül"_s, u"240601000005"_s}}) {
        search("NAME", text);
        EXPECT_EQ(column(0), QStringList{regNo}) << text.toStdString();
    }
    EXPECT_EQ(cell(0, 1), u"JÖRG");
}

TEST_F(SearchTest, patternCharactersArePlainText) {
    writeLines(u"Record/2406.vrf"_s, {handLine({{1, "240601000001"}, {550, "A.C (UK) Ltd*"}}),
                                      handLine({{1, "240601000002"}, {550, "ABC Ltd"}})});
    select(15, "JUNE", "2024");
    search("ORGANISATION", u"a.c"_s);
    EXPECT_EQ(column(0), QStringList{u"240601000001"_s});
    search("ORGANISATION", u"(uk) ltd*"_s);
    EXPECT_EQ(column(0), QStringList{u"240601000001"_s});
    EXPECT_EQ(search("ORGANISATION", u"a.*"_s), GridLists::Outcome::Message);
}

// The search steps over bytes it need not look at; it must still find a text that starts inside a near-miss,
// that fills the searched columns exactly, or that ends on their last column, and never one cut by their end.
TEST_F(SearchTest, findsTextsAtEveryPlaceInTheSearchedColumns) {
    writeLines(u"Record/2406.vrf"_s,
               {handLine({{1, "240601000001"}, {69, "aaab"}}),       // after a near-miss "aa"
                handLine({{1, "240601000002"}, {69, "AAB"}}),        // at the first column
                handLine({{1, "240601000003"}, {69, "xxxxxxxAAB"}}), // ending on the tenth and last column
                handLine({{1, "240601000004"}, {69, "xxxxxxxxAA"}, {80, "B"}}), // cut by the field's end
                handLine({{1, "240601000005"}, {69, "ab ab aa"}})});
    select(15, "JUNE", "2024");
    search("CAR REGISTRATION", u"aab"_s);
    EXPECT_EQ(column(0), (QStringList{u"240601000001"_s, u"240601000002"_s, u"240601000003"_s}));
    search("CAR REGISTRATION", u"xxxxxxxxaa"_s);
    EXPECT_EQ(column(0), QStringList{u"240601000004"_s}) << "a text as long as the columns";
    EXPECT_EQ(search("CAR REGISTRATION", u"xxxxxxxxaab"_s), GridLists::Outcome::Message)
        << "longer than the columns";
    search("ANY TEXT", u"aab"_s);
    EXPECT_EQ(column(0), (QStringList{u"240601000001"_s, u"240601000002"_s, u"240601000003"_s}));
    search("ANY TEXT", u"aa b"_s);
    EXPECT_EQ(column(0), QStringList{u"240601000004"_s}) << "the whole line joins the columns";
}

TEST_F(SearchTest, refusalsAndTheThreeMessages) {
    select(15, "JUNE", "2024");
    EXPECT_EQ(search("NAME", u"   "_s), GridLists::Outcome::Refused);
    EXPECT_EQ(desk.prompter.last().text, u"Can't Search!  Nothing Entered in FIND Box to look for ");

    EXPECT_EQ(search("NAME", u"x"_s), GridLists::Outcome::Message);
    EXPECT_EQ(desk.prompter.last().title, u"Porvane 90 6725");
    EXPECT_EQ(desk.prompter.last().text, u"No Visitor records can be found for the DATE Specified");

    desk.state.ListedCount = 4;
    writeLines(u"Record/2406.vrf"_s, {handLine({{1, "240601000001"}, {14, "Ann"}})});
    EXPECT_EQ(search("NAME", u"zed"_s), GridLists::Outcome::Message);
    EXPECT_EQ(desk.prompter.last().title, u"Porvane 90 6726");
    EXPECT_EQ(desk.prompter.last().text, u"No items have can be found for JUNE 2024");
    EXPECT_EQ(desk.prompter.last().icon, Icon::Exclamation);
    EXPECT_EQ(lists.table().gridRowCount(), 50);
    EXPECT_EQ(desk.state.ListedCount, 4);
    EXPECT_EQ(RecordSearch::settledKindText(u"SHOE SIZE"_s), u"ANY TEXT") << "an unknown kind searches all";
}

} // namespace
