#include "lists/date_selection.h"

#include "store/digits.h"

#include <algorithm>
#include <array>

namespace porvane {

namespace {

const std::array<const char16_t*, 12> kMonthNames{u"JANUARY",   u"FEBRUARY", u"MARCH",    u"APRIL",
                                                  u"MAY",       u"JUNE",     u"JULY",     u"AUGUST",
                                                  u"SEPTEMBER", u"OCTOBER",  u"NOVEMBER", u"DECEMBER"};

QString title() {
    return QStringLiteral("Porvane 90");
}

} // namespace

DateSelection::DateSelection(int currentYear)
    : m_lastYear(currentYear + kYearsAhead) {}

QStringList DateSelection::dayItems() {
    QStringList items{noDay()};
    for (int d = 1; d <= 31; ++d)
        items << QString::number(d);
    return items;
}

QStringList DateSelection::monthItems() {
    QStringList items;
    for (const char16_t* name : kMonthNames)
        items << QString::fromUtf16(name);
    return items;
}

QString DateSelection::monthYearText(const QDate& month) {
    return monthItems().value(month.month() - 1) + u' ' + QString::number(month.year());
}

QStringList DateSelection::yearItems() const {
    QStringList items;
    for (int y = kFirstYear; y <= m_lastYear; ++y)
        items << QString::number(y);
    return items;
}

void DateSelection::setDate(const QDate& date) {
    m_day = QString::number(date.day());
    m_month = QString::fromUtf16(kMonthNames[std::size_t(date.month() - 1)]);
    m_year = date.toString(QStringLiteral("yyyy"));
    notify();
}

QString DateSelection::MonthNumber(const QString& monthText) {
    const QString abbrev = monthText.trimmed().left(3).toUpper();
    for (std::size_t i = 0; i < kMonthNames.size(); ++i)
        if (QString::fromUtf16(kMonthNames[i]).left(3) == abbrev)
            return QStringLiteral("%1").arg(int(i) + 1, 2, 10, QLatin1Char('0'));
    return {};
}

bool DateSelection::testDate(Prompter& prompter) {
    DateInvalid = false;
    const QString month = m_month.trimmed();
    const int day = leadingNumber(m_day);
    auto refuse = [&](const QString& text, int lastDay) {
        if (day > lastDay) {
            prompter.tell(title(), text, Icon::Exclamation);
            m_day = QString::number(lastDay);
            notify();
        }
    };
    static const QStringList kLong{QStringLiteral("JANUARY"), QStringLiteral("MARCH"),
                                   QStringLiteral("MAY"),     QStringLiteral("JULY"),
                                   QStringLiteral("AUGUST"),  QStringLiteral("OCTOBER"),
                                   QStringLiteral("DECEMBER")};
    static const QStringList kShort{QStringLiteral("APRIL"), QStringLiteral("JUNE"),
                                    QStringLiteral("SEPTEMBER"), QStringLiteral("NOVEMBER")};
    if (kLong.contains(month)) {
        refuse(tr("ATTENTION: Invalid DAY Entered for the Month Selected"), 31);
    } else if (kShort.contains(month)) {
        refuse(tr("ATTENTION: Only [ 30 ] Days in the Month Selected"), 30);
    } else if (month == u"FEBRUARY") {
        if (QDate::isLeapYear(leadingNumber(m_year)))
            refuse(tr("ATTENTION: Only [ 29 ] Days in February %1").arg(m_year), 29);
        else
            refuse(tr("ATTENTION: Only [ 28 ] Days in February %1").arg(m_year), 28);
    } else {
        prompter.tell(title(), tr("ATTENTION: No VALID Date selected - Try selecting again"),
                      Icon::Exclamation);
        DateInvalid = true;
        return false;
    }
    return testYear(prompter);
}

bool DateSelection::testYear(Prompter& prompter) {
    DateInvalid = false;
    const int year = leadingNumber(m_year);
    if (year < kFirstYear || year > m_lastYear) {
        prompter.tell(title(), tr("ATTENTION: No VALID Date selected - Try selecting again"),
                      Icon::Exclamation);
        DateInvalid = true;
    }
    return !DateInvalid;
}

QDate DateSelection::selectedDate() const {
    const QString number = monthNumber();
    if (number.isEmpty() || m_day.trimmed() == noDay())
        return {};
    return QDate(leadingNumber(m_year), number.toInt(), leadingNumber(m_day));
}

QString DateSelection::selectedDateText() const {
    const QDate d = selectedDate();
    return d.isValid() ? d.toString(QStringLiteral("dd-MM-yyyy")) : QString();
}

QDate DateSelection::calendarDate() const {
    const int month = monthNumber().toInt();
    const int year = leadingNumber(m_year);
    if (month < 1)
        return {};
    const QDate first(year, month, 1);
    const int day = m_day.trimmed() == noDay() ? 1 : leadingNumber(m_day);
    return QDate(year, month, std::clamp(day, 1, first.daysInMonth()));
}

void DateSelection::stepTo(int month, int year) {
    m_month = QString::fromUtf16(kMonthNames[std::size_t(month - 1)]);
    m_year = QString::number(year);
    // The calendar cannot hold 31 April: the kept day is held to the new month's last day.
    if (m_day.trimmed() != noDay()) {
        const int day = leadingNumber(m_day);
        if (day > QDate(year, month, 1).daysInMonth())
            m_day = QString::number(QDate(year, month, 1).daysInMonth());
    }
    notify();
}

void DateSelection::cmdCalDECR() {
    const QDate current = calendarDate();
    if (!current.isValid())
        return;
    if (current.month() > 1)
        stepTo(current.month() - 1, current.year());
    else
        stepTo(12, std::max(current.year() - 1, kFirstYear));
}

void DateSelection::cmdCalINCR() {
    const QDate current = calendarDate();
    if (!current.isValid())
        return;
    if (current.month() < 12)
        stepTo(current.month() + 1, current.year());
    else
        stepTo(1, current.year() + 1 > m_lastYear ? kFirstYear : current.year() + 1);
}

} // namespace porvane
