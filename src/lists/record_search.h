#pragma once

#include "lists/list_columns.h"
#include "store/record_line.h"

#include <QCoreApplication>
#include <QDate>
#include <QStringList>
#include <array>
#include <optional>

namespace porvane {

// The ten kinds of CBListBy, each searching its own part of the booking line.
enum class SearchKind {
    AnyText,
    Name,
    Organisation,
    HomeAddress,
    CarRegistration,
    Department,
    Category,
    BuildingLocation,
    ReferenceNo,
    VisitingReportingTo,
};

// Finds a find text in stored Windows-1252 bytes, whatever their case. Sixteen places are tried at once, on
// the two bytes that fold to the text's first character and the two that fold to its last; only where both
// fit is the whole text compared.
class FoldedFinder {
public:
    explicit FoldedFinder(const QString& text);
    bool foundIn(QByteArrayView hay) const;

private:
    bool matchesAt(const unsigned char* at) const;

    QByteArray m_needle;                    // folded
    std::array<unsigned char, 2> m_first{}; // the bytes that fold to the first character (twice when one)
    std::array<unsigned char, 2> m_last{};  // and to the last
};

// A search kind with its find text, ready to test booking lines. The search and the bulk deletion by text
// both decide with it, so a text finds in one exactly what it deletes in the other.
class SearchMatch {
public:
    SearchMatch(SearchKind kind, const QString& findText);
    // The kind's part of the line contains the find text, without regard to case; every character of the
    // find text is taken literally.
    bool matches(const RecordLine& line) const;

private:
    SearchKind m_kind;
    FoldedFinder m_finder;
};

// The months a search reads, the first to the last (both included), each month's file in turn.
struct SearchMonths {
    QDate first; // the first day of each month
    QDate last;

    // One month, from any of its days.
    static SearchMonths of(const QDate& month);
    // From the earlier month to the later, whichever is given first.
    static SearchMonths between(const QDate& a, const QDate& b);
    bool valid() const { return first.isValid() && last.isValid() && first <= last; }
    int count() const;
};

class RecordSearch {
    Q_DECLARE_TR_FUNCTIONS(RecordSearch)

public:
    // CBListBy's entries, in order.
    static QStringList kindItems();
    static QString kindText(SearchKind kind);
    // The kind named by a text (trimmed), if it is one of the ten.
    static std::optional<SearchKind> kindFromText(const QString& text);
    // The caption SearchLa takes when the kind is chosen.
    static QString caption(SearchKind kind);
    // Leaving CBListBy: a text that is none of the kinds becomes "ANY TEXT".
    static QString settledKindText(const QString& text);

    // Why a find text cannot be searched for, empty when it can: a character that the Windows-1252 files
    // cannot hold is stored as "?", so such a text would match every stored "?".
    static QString findTextRefusal(const QString& findText);
    // The find text as it is compared: trimmed, and for NAME runs of three and then of two blanks made one.
    static QString findTextFor(SearchKind kind, const QString& findText);

    // Every booking of the months whose searched text contains the find text, without regard to case; any
    // character of the find text is taken literally. The months are read in order, each line streamed from
    // its file; a month without a file is passed over, and FileNotFound comes back only when none of them
    // has one. A search of several months shows each row's month beside its number.
    static BuiltList run(LineFiles& files, const SearchMonths& months, SearchKind kind,
                         const QString& findText);
};

} // namespace porvane
