#include "lists/record_search.h"

#include "store/line_reader.h"
#include "store/windows1252.h"

#include <array>
#include <cstdio>
#include <cstring>

namespace porvane {

namespace {

struct KindSpec {
    const char* text;
    const char* caption;
    int column; // the searched columns; NAME builds its own text
    int width;
};

constexpr std::array<KindSpec, 10> kKinds{{
    {QT_TRANSLATE_NOOP("RecordSearch", "ANY TEXT"),
     QT_TRANSLATE_NOOP("RecordSearch", "FIND TEXT IN ANY FIELD"), 1, 0},
    {QT_TRANSLATE_NOOP("RecordSearch", "NAME"), QT_TRANSLATE_NOOP("RecordSearch", "LOOK FOR VISITOR BY"), 0,
     0},
    {QT_TRANSLATE_NOOP("RecordSearch", "ORGANISATION"),
     QT_TRANSLATE_NOOP("RecordSearch", "SEARCH ALL FIELDS IN:"), fieldSpec(Field::Organisation).column,
     spanWidth(Field::Organisation, Field::OrgEmail)},
    {QT_TRANSLATE_NOOP("RecordSearch", "HOME ADDRESS"),
     QT_TRANSLATE_NOOP("RecordSearch", "SEARCH ALL FIELDS IN:"), fieldSpec(Field::AddressLine1).column,
     spanWidth(Field::AddressLine1, Field::HomeTel)},
    {QT_TRANSLATE_NOOP("RecordSearch", "CAR REGISTRATION"),
     QT_TRANSLATE_NOOP("RecordSearch", "FIND WHOLE OR PART OF A"), fieldSpec(Field::CarReg).column,
     fieldSpec(Field::CarReg).width},
    {QT_TRANSLATE_NOOP("RecordSearch", "DEPARTMENT"), QT_TRANSLATE_NOOP("RecordSearch", "FIND OR LIST A:"),
     fieldSpec(Field::Department).column, fieldSpec(Field::Department).width},
    {QT_TRANSLATE_NOOP("RecordSearch", "CATEGORY"), QT_TRANSLATE_NOOP("RecordSearch", "FIND OR LIST A:"),
     fieldSpec(Field::Category).column, fieldSpec(Field::Category).width},
    {QT_TRANSLATE_NOOP("RecordSearch", "BUILDING/LOCATION"),
     QT_TRANSLATE_NOOP("RecordSearch", "FIND OR LIST A:"), fieldSpec(Field::Location).column,
     fieldSpec(Field::Location).width},
    {QT_TRANSLATE_NOOP("RecordSearch", "REFERENCE NO"), QT_TRANSLATE_NOOP("RecordSearch", "FIND OR LIST A:"),
     fieldSpec(Field::OurRef).column, fieldSpec(Field::OurRef).width},
    {QT_TRANSLATE_NOOP("RecordSearch", "VISITING/REPORTING TO"),
     QT_TRANSLATE_NOOP("RecordSearch", "FIND WHO A PERSON IS"), fieldSpec(Field::Visiting).column,
     spanWidth(Field::Visiting, Field::VisitingPager)},
}};

constexpr ColumnDef kColArrival{QT_TRANSLATE_NOOP("ListColumns", "Arrival"), 60, false, 0, 0, Shown::Own};

constexpr ColumnDef kSearchColumns[] = {
    kColRegistration, kColFirstName, kColLastName,   kColOrganisation, kColCategory, kColParty,
    kColTelephone,    kColPassValid, kColPassIssued, kColLength,       kColPassType, kColPassEnds,
    kColArrival,      kColCarReg,    kColReportsTo,  kColDepartment,   kColContact,
};

// "Arrival": the first booked time of the month, or nothing.
ListCell arrivalCell(const RecordLine& line, quint16, int, std::array<char, 8>& scratch) {
    for (int day = 1; day <= kBookedSlotCount; ++day) {
        const QByteArrayView slot = rawSlot(line, day);
        if (isBooked(slot))
            return slotCell(slot, scratch);
    }
    return {};
}

constexpr ListLayout kSearchLayout{kSearchColumns, 0xE0FFFF, arrivalCell};

// A search of several months: the same columns, with each row's month beside its number.
constexpr ColumnDef kColMonth{QT_TRANSLATE_NOOP("ListColumns", "Month"), 65, false, 0, 0, Shown::Own};
constexpr int kMonthColumn = 1;
constexpr ColumnDef kRangeSearchColumns[] = {
    kColRegistration, kColMonth,     kColFirstName, kColLastName,   kColOrganisation, kColCategory,
    kColParty,        kColTelephone, kColPassValid, kColPassIssued, kColLength,       kColPassType,
    kColPassEnds,     kColArrival,   kColCarReg,    kColReportsTo,  kColDepartment,   kColContact,
};

// A row's note is its month, counted as year * 12 + month - 1.
quint16 monthNote(const QDate& month) {
    return quint16(month.year() * 12 + month.month() - 1);
}

// "2026-11" for the month of the note; "Arrival" as in one month.
ListCell rangeCell(const RecordLine& line, quint16 note, int column, std::array<char, 8>& scratch) {
    if (column != kMonthColumn)
        return arrivalCell(line, note, column, scratch);
    const int length = std::snprintf(scratch.data(), scratch.size(), "%04d-%02d", note / 12, note % 12 + 1);
    return {QByteArrayView(scratch.data(), length)};
}

constexpr ListLayout kRangeSearchLayout{kRangeSearchColumns, 0xE0FFFF, rangeCell};

// The find text in the fields the kind searches, so that a server sends only the lines that may hold it.
LineNarrowing searchNarrowing(SearchKind kind, const QString& findText) {
    LineNarrowing narrowing;
    narrowing.searchWord = RecordSearch::findTextFor(kind, findText);
    const KindSpec& def = kKinds[std::size_t(kind)];
    if (kind == SearchKind::Name)
        narrowing.searchFields = {int(Field::FirstName), int(Field::LastName)};
    else if (kind != SearchKind::AnyText) // the whole line when no fields are named
        for (const FieldSpec& field : kRecordFields)
            if (field.column >= def.column && field.column + field.width <= def.column + def.width)
                narrowing.searchFields << int(field.field);
    return narrowing;
}

// Both bytes that fold to a folded byte: itself, and its other case where it has one.
std::array<unsigned char, 2> casesOf(unsigned char folded) {
    std::array<unsigned char, 2> cases{folded, folded};
    for (int b = 0; b < 256; ++b)
        if (kWindows1252Fold[std::size_t(b)] == folded && b != folded)
            cases[1] = static_cast<unsigned char>(b);
    return cases;
}

// Sixteen bytes at a time; the compiler makes vector instructions of it where the machine has them.
typedef unsigned char Bytes16 __attribute__((vector_size(16)));

Bytes16 splat(unsigned char b) {
    Bytes16 v;
    std::memset(&v, b, sizeof v);
    return v;
}

Bytes16 load16(const unsigned char* at) {
    Bytes16 v;
    std::memcpy(&v, at, sizeof v);
    return v;
}

} // namespace

FoldedFinder::FoldedFinder(const QString& text)
    : m_needle(toWindows1252(text)) {
    for (char& c : m_needle)
        c = char(kWindows1252Fold[static_cast<unsigned char>(c)]);
    if (m_needle.isEmpty())
        return;
    m_first = casesOf(static_cast<unsigned char>(m_needle.front()));
    m_last = casesOf(static_cast<unsigned char>(m_needle.back()));
}

bool FoldedFinder::matchesAt(const unsigned char* at) const {
    const auto* k = reinterpret_cast<const unsigned char*>(m_needle.constData());
    for (qsizetype j = 0; j < m_needle.size(); ++j)
        if (kWindows1252Fold[at[j]] != k[j])
            return false;
    return true;
}

bool FoldedFinder::foundIn(QByteArrayView hay) const {
    const qsizetype n = m_needle.size();
    if (n == 0)
        return true;
    const auto* h = reinterpret_cast<const unsigned char*>(hay.data());
    const qsizetype last = hay.size() - n; // the last place where the text can start
    const Bytes16 first0 = splat(m_first[0]), first1 = splat(m_first[1]);
    const Bytes16 last0 = splat(m_last[0]), last1 = splat(m_last[1]);
    // The sixteen places from `at` on.
    const auto foundFrom = [&](qsizetype at) {
        const Bytes16 starts = load16(h + at);
        const Bytes16 ends = load16(h + at + n - 1);
        const auto fits = ((starts == first0) | (starts == first1)) & ((ends == last0) | (ends == last1));
        quint64 halves[2];
        std::memcpy(halves, &fits, sizeof halves);
        for (int half = 0; half < 2; ++half)
            if (halves[half] != 0)
                for (qsizetype i = at + half * 8; i < at + half * 8 + 8; ++i)
                    if (matchesAt(h + i))
                        return true;
        return false;
    };
    qsizetype at = 0;
    for (; at + 15 <= last; at += 16)
        if (foundFrom(at))
            return true;
    // The places left are the last sixteen, some of them tried already, when the hay has sixteen.
    if (at <= last && last >= 15)
        return foundFrom(last - 15);
    for (; at <= last; ++at)
        if (matchesAt(h + at))
            return true;
    return false;
}

QStringList RecordSearch::kindItems() {
    QStringList items;
    for (const KindSpec& k : kKinds)
        items.append(tr(k.text));
    return items;
}

QString RecordSearch::kindText(SearchKind kind) {
    return tr(kKinds[std::size_t(kind)].text);
}

std::optional<SearchKind> RecordSearch::kindFromText(const QString& text) {
    const QString t = text.trimmed();
    for (std::size_t i = 0; i < kKinds.size(); ++i)
        if (t == tr(kKinds[i].text))
            return SearchKind(i);
    return std::nullopt;
}

QString RecordSearch::caption(SearchKind kind) {
    return tr(kKinds[std::size_t(kind)].caption);
}

QString RecordSearch::settledKindText(const QString& text) {
    return kindFromText(text) ? text : kindText(SearchKind::AnyText);
}

QString RecordSearch::findTextRefusal(const QString& findText) {
    if (fitsWindows1252(findText))
        return {};
    return tr("Can't Search!  \"%1\" has a character that the visitor files cannot hold (they keep Western "
              "European letters only): it would find every booking stored with a \"?\".")
        .arg(findText.trimmed());
}

QString RecordSearch::findTextFor(SearchKind kind, const QString& findText) {
    QString text = findText.trimmed();
    if (kind == SearchKind::Name)
        text.replace(QStringLiteral("   "), QStringLiteral(" "))
            .replace(QStringLiteral("  "), QStringLiteral(" "));
    return text;
}

SearchMatch::SearchMatch(SearchKind kind, const QString& findText)
    : m_kind(kind)
    , m_finder(RecordSearch::findTextFor(kind, findText)) {}

bool SearchMatch::matches(const RecordLine& line) const {
    if (m_kind == SearchKind::AnyText)
        return m_finder.foundIn(line.bytes());
    if (m_kind == SearchKind::Name) {
        char name[16 + 1 + 18];
        const QByteArrayView first = trimBlanks(line.columns(14, 16));
        const QByteArrayView last = line.columns(31, 18);
        std::memcpy(name, first.data(), size_t(first.size()));
        name[first.size()] = ' ';
        std::memcpy(name + first.size() + 1, last.data(), size_t(last.size()));
        return m_finder.foundIn(QByteArrayView(name, first.size() + 1 + last.size()));
    }
    const KindSpec& def = kKinds[std::size_t(m_kind)];
    return m_finder.foundIn(line.columns(def.column, def.width));
}

SearchMonths SearchMonths::of(const QDate& month) {
    const QDate first(month.year(), month.month(), 1);
    return {first, first};
}

SearchMonths SearchMonths::between(const QDate& a, const QDate& b) {
    const QDate first(a.year(), a.month(), 1);
    const QDate last(b.year(), b.month(), 1);
    return first <= last ? SearchMonths{first, last} : SearchMonths{last, first};
}

int SearchMonths::count() const {
    if (!valid())
        return 0;
    return (last.year() - first.year()) * 12 + last.month() - first.month() + 1;
}

BuiltList RecordSearch::run(LineFiles& files, const SearchMonths& months, SearchKind kind,
                            const QString& findText) {
    const SearchMatch match(kind, findText);
    // Months that are no months have no file.
    BuiltList out{ListTable(months.count() > 1 ? kRangeSearchLayout : kSearchLayout),
                  months.valid() ? FileError() : FileError::notFound(files.where())};
    bool anyFile = false;
    for (QDate month = months.first; months.valid() && month <= months.last; month = month.addMonths(1)) {
        const std::unique_ptr<LineReader> reader =
            files.read(LineFileName::month(month), searchNarrowing(kind, findText));
        if (reader->error().number == FileError::FileNotFound) {
            if (!anyFile && !out.error)
                out.error = reader->error(); // the first month's, should none of them have a file
            continue;
        }
        anyFile = true;
        out.table.readFrom(*reader);
        const quint16 note = monthNote(month);
        QByteArrayView bytes;
        while (reader->next(bytes))
            if (match.matches(RecordLine(bytes)))
                out.table.addRow(*reader, bytes.size(), note);
        out.error = reader->error();
        if (out.error)
            break;
    }
    return out;
}

} // namespace porvane
