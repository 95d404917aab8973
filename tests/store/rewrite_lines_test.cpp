#include "store/line_reader.h"
#include "store_fixture.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

// A file of `count` numbered lines, each `width` bytes before its line end.
QByteArray numberedLines(int count, int width, QByteArrayView lineEnd = "\r\n") {
    QByteArray bytes;
    for (int i = 0; i < count; ++i)
        bytes += QByteArray::number(i).leftJustified(width, '.') + lineEnd.toByteArray();
    return bytes;
}

struct RewriteLinesTest : ::testing::Test {
    TempDataFolder folder;
    QString file = folder.path(u"Record/2403.vrf"_s);

    // Rewrites the file, replacing line `target` by "changed" and dropping lines from `dropFrom` on.
    FileError rewrite(int target, int dropFrom, bool* changed, WritePath* writePath = nullptr) {
        int index = 0;
        return rewriteLines(
            file,
            [&](QByteArrayView, QByteArray& out) {
                const int i = index++;
                if (i == target && i < dropFrom)
                    out.append("changed").append(kLineEnd);
                return i == target || i >= dropFrom;
            },
            changed, writePath);
    }
};

} // namespace

// The new content goes out in pieces as it is made; a month far bigger than one piece must come out whole,
// with its change in place, whether the change comes first, in the middle, last, or as lines dropped.
TEST_F(RewriteLinesTest, aBigFileIsRewrittenWhole_whereverTheChangeFalls) {
    const QByteArray before = numberedLines(3000, 1186);
    QByteArrayList lines = before.split('\n');
    lines.removeLast();
    for (const int target : {0, 1500, 2999}) {
        folder.write(u"Record/2403.vrf"_s, before);
        bool changed = false;
        ASSERT_FALSE(rewrite(target, 3000, &changed)) << target;
        EXPECT_TRUE(changed);
        QByteArrayList expected = lines;
        expected[target] = "changed\r";
        EXPECT_EQ(folder.read(u"Record/2403.vrf"_s), expected.join('\n') + '\n') << target;
    }
    folder.write(u"Record/2403.vrf"_s, before);
    bool changed = false;
    ASSERT_FALSE(rewrite(-1, 2000, &changed));
    EXPECT_TRUE(changed);
    EXPECT_EQ(folder.read(u"Record/2403.vrf"_s), before.first(2000 * 1188))
        << "the last thousand lines dropped";
}

// CR LF, LF and a lone CR (old Mac tools) each end a line, for the readers and the rewrite alike; unchanged
// content is not written, other line ends are written back as CR LF.
TEST_F(RewriteLinesTest, unchangedContentIsNotWritten_andLfOrLoneCrLinesAreLinesWrittenBackWithCrLf) {
    folder.write(u"Record/2403.vrf"_s, numberedLines(500, 1186));
    FailingWritePath failing;
    failing.failCommit = true; // any write that reached the rename would fail the call
    bool changed = true;
    EXPECT_FALSE(rewrite(-1, 500, &changed, &failing));
    EXPECT_FALSE(changed);
    EXPECT_EQ(failing.written, 0);

    folder.write(u"Record/2403.vrf"_s, numberedLines(500, 1186, "\n"));
    ASSERT_FALSE(rewrite(-1, 500, &changed));
    EXPECT_TRUE(changed);
    EXPECT_EQ(folder.read(u"Record/2403.vrf"_s), numberedLines(500, 1186));

    folder.write(u"Record/2403.vrf"_s, "one\rtwo\r\nthree\nfour\r\rsix\r");
    QStringList read;
    LineReader reader(file);
    for (QByteArrayView line; reader.next(line);)
        read << QString::fromLatin1(line);
    EXPECT_EQ(read, (QStringList{u"one"_s, u"two"_s, u"three"_s, u"four"_s, u""_s, u"six"_s}));
    ASSERT_FALSE(rewrite(1, 6, &changed));
    EXPECT_EQ(folder.read(u"Record/2403.vrf"_s), "one\r\nchanged\r\nthree\r\nfour\r\n\r\nsix\r\n");
}

// A write that fails part-way, in any piece, leaves the old file byte-identical.
TEST_F(RewriteLinesTest, aWriteFailingInAnyPiece_leavesTheOldFileAsItWas) {
    const QByteArray before = numberedLines(3000, 1186);
    for (const qint64 budget : {0LL, 100LL, 300000LL, 3000000LL}) {
        folder.write(u"Record/2403.vrf"_s, before);
        FailingWritePath failing;
        failing.budget = budget;
        bool changed = true;
        EXPECT_EQ(rewrite(0, 3000, &changed, &failing).number, 61) << budget;
        EXPECT_FALSE(changed);
        EXPECT_EQ(failing.written, budget);
        EXPECT_EQ(folder.read(u"Record/2403.vrf"_s), before) << budget;
        EXPECT_EQ(QDir(folder.path(u"Record"_s)).entryList(QDir::Files), QStringList{u"2403.vrf"_s});
    }
}

TEST_F(RewriteLinesTest, anAppendKilledPartWay_isTakenBackByTheNextChange_butWholeLinesStay) {
    const QByteArray old = numberedLines(3, 20);
    struct Case {
        const char* what;
        QByteArray leftBehind;
        QByteArray expected;
    };
    const Case cases[] = {
        {"part of a line", "torn-li", old + "appended\r\n"},
        {"a whole line", "whole-line\r\n", old + "whole-line\r\nappended\r\n"},
        {"nothing yet", "", old + "appended\r\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        folder.write(u"Record/2403.vrf"_s, old + c.leftBehind);
        folder.write(u"Record/2403.vrf.appending"_s, QByteArray::number(old.size()));
        ASSERT_FALSE(appendLine(file, "appended"));
        EXPECT_EQ(folder.read(u"Record/2403.vrf"_s), c.expected);
        EXPECT_FALSE(folder.exists(u"Record/2403.vrf.appending"_s));
    }
    // An update after the kill sees the month without the torn part too.
    folder.write(u"Record/2403.vrf"_s, old + "torn");
    folder.write(u"Record/2403.vrf.appending"_s, QByteArray::number(old.size()));
    bool changed = false;
    ASSERT_FALSE(rewrite(1, 3, &changed));
    EXPECT_EQ(folder.read(u"Record/2403.vrf"_s), old.first(22) + "changed\r\n" + old.sliced(44));
    EXPECT_FALSE(folder.exists(u"Record/2403.vrf.appending"_s));
}
