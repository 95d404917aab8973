#include "lists/record_search.h"
#include "lists_fixture.h"

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

struct SearchFixture : ListsFixture {
    // In the month of the date boxes.
    GridLists::Outcome search(const char* kind, const QString& text) {
        return lists.startSearch({GridLists::monthOfBoxes(dates), QString::fromLatin1(kind), text});
    }
    GridLists::Outcome searchMonths(const QDate& from, const QDate& to, const char* kind,
                                    const QString& text) {
        return lists.startSearch({SearchMonths::between(from, to), QString::fromLatin1(kind), text});
    }
};
using SearchTest = OverStores<SearchFixture>;
PORVANE_OVER_STORES(SearchTest);

// Each line carries "qz" plus its own word in exactly one kind's columns; most of them columns the grid does
// not show. The e-mail is found by ANY TEXT only.
TEST_P(SearchTest, eachKindSearchesItsOwnColumns) {
    const std::tuple<const char*, int, const char*> kinds[] = {{"ANY TEXT", 80, "qzmail@x.org"},
                                                               {"ORGANISATION", 715, "qzorg@firm.com"},
                                                               {"HOME ADDRESS", 180, "QZTOWN"},
                                                               {"CAR REGISTRATION", 69, "QZ12CAR"},
                                                               {"DEPARTMENT", 525, "QZ DEPT"},
                                                               {"CATEGORY", 504, "QZ CATEGORY"},
                                                               {"BUILDING/LOCATION", 829, "QZ BUILDING"},
                                                               {"REFERENCE NO", 130, "QZREF"},
                                                               {"VISITING/REPORTING TO", 812, "QZ PAGER"},
                                                               {"NAME", 14, "Qzra"}};
    QByteArray bytes;
    for (int i = 0; i < 10; ++i) {
        const QByteArray regNo = QByteArray::number(240601000001LL + i);
        bytes += handLine({{1, regNo.constData()}, {std::get<1>(kinds[i]), std::get<2>(kinds[i])}}) + "\r\n";
    }
    put(u"Record/2406.vrf"_s, bytes);
    select(15, "JUNE", "2024");
    for (int i = 1; i < 10; ++i) {
        const char* kind = std::get<0>(kinds[i]);
        EXPECT_EQ(search(kind, u"qz"_s), GridLists::Outcome::Listed) << kind;
        EXPECT_EQ(column(0), QStringList{QString::number(240601000001LL + i)}) << kind;
    }
    EXPECT_EQ(search("ANY TEXT", u"Qz"_s), GridLists::Outcome::Listed);
    EXPECT_EQ(lists.table().listedCount(), 10);
    EXPECT_EQ(search("ANY TEXT", u"QZMAIL"_s), GridLists::Outcome::Listed);
    EXPECT_EQ(column(0), QStringList{u"240601000001"_s});
    EXPECT_EQ(desk.state.listMode, ListMode::Search);
    EXPECT_EQ(desk.state.ListedCount, 1);
    EXPECT_EQ(lists.table().rowColour(1), 0xE0FFFFu);
    EXPECT_TRUE(desk.prompter.messages().isEmpty());
}

TEST_P(SearchTest, nameFoldsBlanksAndMatchesPartsOfWordsInAnyCase) {
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

// The search steps over bytes it need not look at; it must still find a text that starts inside a near-miss,
// that fills the searched columns exactly, or that ends on their last column, and never one cut by their end.
// Pattern characters are plain text.
TEST_P(SearchTest, findsTextsAtEveryPlaceInTheSearchedColumns) {
    writeLines(u"Record/2406.vrf"_s,
               {handLine({{1, "240601000001"}, {69, "aaab"}}),       // after a near-miss "aa"
                handLine({{1, "240601000002"}, {69, "AAB"}}),        // at the first column
                handLine({{1, "240601000003"}, {69, "xxxxxxxAAB"}}), // ending on the tenth and last column
                handLine({{1, "240601000004"}, {69, "xxxxxxxxAA"}, {80, "B"}}), // cut by the field's end
                handLine({{1, "240601000005"}, {69, "ab ab aa"}}),
                handLine({{1, "240601000006"}, {69, "A.C (UK)*"}})});
    select(15, "JUNE", "2024");
    search("CAR REGISTRATION", u"aab"_s);
    EXPECT_EQ(column(0), (QStringList{u"240601000001"_s, u"240601000002"_s, u"240601000003"_s}));
    search("CAR REGISTRATION", u"xxxxxxxxaa"_s);
    EXPECT_EQ(column(0), QStringList{u"240601000004"_s}) << "a text as long as the columns";
    EXPECT_EQ(search("CAR REGISTRATION", u"xxxxxxxxaab"_s), GridLists::Outcome::Message)
        << "longer than the columns";
    search("ANY TEXT", u"aab"_s);
    EXPECT_EQ(column(0), (QStringList{u"240601000001"_s, u"240601000002"_s, u"240601000003"_s}));
    search("CAR REGISTRATION", u"(uk)*"_s);
    EXPECT_EQ(column(0), QStringList{u"240601000006"_s}) << "pattern characters are plain text";
    EXPECT_EQ(search("CAR REGISTRATION", u"a.*"_s), GridLists::Outcome::Message);
    search("ANY TEXT", u"aa b"_s);
    EXPECT_EQ(column(0), QStringList{u"240601000004"_s}) << "the whole line joins the columns";
}

// Sixteen places are tried at once: a text is found wherever it starts in the line, on either side of those
// steps and on the line's last columns, with a letter outside ASCII in either case; never where it is one
// character short, nor past the end of a short line.
TEST_P(SearchTest, anyTextFindsATextWhereverItStartsInTheLine) {
    if (GetParam() == StoreKind::Server)
        GTEST_SKIP() << "a server keeps the fields' columns only: no text can be laid out between them";
    QByteArray bytes;
    QStringList expected;
    for (int column = 14; column <= 1186 - 2; ++column) {
        const QByteArray regNo = QByteArray::number(240601000000LL + column);
        bytes += handLine({{1, regNo.constData()}, {column, column % 2 ? "q\xC9z" : "Q\xE9Z"}}) + "\r\n";
        expected.append(QString::fromLatin1(regNo));
    }
    bytes += handLine({{1, "240602000001"}, {20, "q\xC9y q\xC9 \xC9z qe\xC9z"}, {1184, "q\xC9"}}) + "\r\n";
    bytes += handLine({{1, "240602000002"}, {40, "q\xC9z"}}, 41) + "\r\n";
    put(u"Record/2406.vrf"_s, bytes);
    select(15, "JUNE", "2024");
    EXPECT_EQ(search("ANY TEXT", u"q\u00E9Z"_s), GridLists::Outcome::Listed);
    EXPECT_EQ(column(0), expected);

    // A text of any length on the line's last columns.
    for (int length = 1; length <= 20; ++length) {
        const QByteArray text = QByteArray("QZXYWVUTSRPONMLKJIHG").left(length);
        put(u"Record/2406.vrf"_s,
            handLine({{1, "240603000001"}, {1186 - length + 1, text.constData()}}) + "\r\n");
        EXPECT_EQ(search("ANY TEXT", QString::fromLatin1(text)), GridLists::Outcome::Listed) << length;
    }
}

TEST_P(SearchTest, refusalsAndTheThreeMessages) {
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

// Listing several months in order, each row with its month, is the flows' (FindAndExport and ListOutput);
// here the range's messages and a damaged month part-way through. Named last month first, the range still
// runs from March to June.
TEST_P(SearchTest, severalMonthsSayWhatTheyFoundNothingIn_andStopAtADamagedMonth) {
    writeLines(u"Record/2403.vrf"_s, {handLine({{1, "240301000001"}, {14, "Jo"}, {31, "Smith"}})});
    writeLines(u"Record/2406.vrf"_s, {handLine({{1, "240601000001"}, {14, "Cy"}, {31, "Goldsmith"}})});
    EXPECT_EQ(searchMonths(QDate(2024, 6, 30), QDate(2024, 3, 1), "NAME", u"smith"_s),
              GridLists::Outcome::Listed);
    EXPECT_EQ(column(0), (QStringList{u"240301000001"_s, u"240601000001"_s}));
    EXPECT_EQ(lists.searchedMonths().first, QDate(2024, 3, 1));
    EXPECT_EQ(lists.searchedMonths().last, QDate(2024, 6, 1));

    EXPECT_EQ(searchMonths(QDate(2024, 3, 1), QDate(2024, 6, 1), "NAME", u"zed"_s),
              GridLists::Outcome::Message);
    EXPECT_EQ(desk.prompter.last().title, u"Porvane 90 6726");
    EXPECT_EQ(desk.prompter.last().text, u"No items have can be found for MARCH 2024 to JUNE 2024");
    EXPECT_EQ(searchMonths(QDate(2023, 1, 1), QDate(2023, 12, 1), "NAME", u"smith"_s),
              GridLists::Outcome::Message);
    EXPECT_EQ(desk.prompter.last().title, u"Porvane 90 6725") << "no month of the range has a file";

    // A damaged month stops the search with its message; the rows found before it stay listed. Only a file
    // can hold a line that long.
    if (GetParam() != StoreKind::DataFolder)
        return;
    desk.folder.write(u"Record/2404.vrf"_s, QByteArray(70000, 'x') + "\r\n");
    EXPECT_EQ(searchMonths(QDate(2024, 3, 1), QDate(2024, 6, 1), "NAME", u"smith"_s),
              GridLists::Outcome::Message);
    EXPECT_EQ(desk.prompter.last().title, u"Porvane 90 6727");
    EXPECT_EQ(column(0), QStringList{u"240301000001"_s});
}

} // namespace
