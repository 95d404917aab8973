#include "desk/booked_times.h"

#include "lists/date_selection.h"
#include "store/digits.h"

#include <QDate>
#include <QLocale>
#include <QTime>

namespace porvane {

namespace {

QString title() {
    return QStringLiteral("Porvane 90");
}

} // namespace

bool isValidTime(const QString& text) {
    if (text.size() != 5 || text[2] != u':')
        return false;
    const int hour = leadingNumber(QStringView(text).left(2));
    const int minute = leadingNumber(QStringView(text).right(2));
    return hour >= 0 && hour <= 23 && minute >= 0 && minute <= 59;
}

TimeEntry parseTimeEntry(const QString& typed) {
    QString text = typed.trimmed();
    if (text.size() == 5) {
        const QChar separator = text[2];
        static const QString kSeparators = QStringLiteral("./\\ -*,;");
        if (kSeparators.contains(separator))
            text = text.left(2) + u':' + text.right(2);
        else if (separator != u':')
            return {TimeEntry::Outcome::IncorrectFormat, typed};
    }
    if (isValidTime(text) || text.isEmpty())
        return {TimeEntry::Outcome::Accepted, text};
    return {TimeEntry::Outcome::InvalidTime, QString()};
}

BookedTimes::BookedTimes(AppState& state, OpenBooking& booking)
    : m_state(state)
    , m_booking(booking) {}

void BookedTimes::setMonth(int year, int month) {
    const QDate first(year, month, 1);
    if (!first.isValid())
        return;
    m_year = year;
    m_month = month;
    m_days = first.daysInMonth();
    if (m_row > m_days)
        m_row = 0;
}

QString BookedTimes::dayLabel(int day) const {
    if (!isDayRow(day))
        return {};
    const QDate date(m_year, m_month, day);
    return date.toString(QStringLiteral("dd")) + u' ' +
           QLocale::c().dayName(date.dayOfWeek(), QLocale::ShortFormat);
}

QString BookedTimes::cell(int day) const {
    if (!isDayRow(day))
        return {};
    if (!m_typed[std::size_t(day - 1)].isEmpty())
        return m_typed[std::size_t(day - 1)];
    const QString stored = m_booking.time(day);
    return stored.trimmed().isEmpty() ? stored : stored.left(2) + u':' + stored.right(2);
}

bool BookedTimes::isMarkedRed(int day) const {
    return isDayRow(day) && m_red[std::size_t(day - 1)];
}

bool BookedTimes::isGrey(int /*day*/) const {
    return false;
}

void BookedTimes::setCurrentCell(int row, int column) {
    m_row = std::clamp(row, 0, m_days);
    m_column = std::clamp(column, 0, 1);
    m_state.help.setTopic(HelpTopic::BookedTimes);
}

// A cell is stored as its first two and last two characters: "09:30" is kept as "0930".
void BookedTimes::setDayTime(int day, const QString& text) {
    const QString t = text.trimmed();
    m_typed[std::size_t(day - 1)].clear();
    if (!t.isEmpty())
        m_red[std::size_t(day - 1)] = false;
    m_booking.setTime(day, t.isEmpty() ? QString() : t.left(2) + t.right(2));
}

void BookedTimes::enterCell(int day, const QString& typed) {
    if (!isDayRow(day))
        return;
    const TimeEntry entry = parseTimeEntry(typed);
    switch (entry.outcome) {
    case TimeEntry::Outcome::Accepted:
        if (entry.text != cell(day))
            setDayTime(day, entry.text);
        break;
    case TimeEntry::Outcome::IncorrectFormat:
        m_state.prompter.tell(title(), tr("Can't Enter This:  Incorrect Time Format"), Icon::Exclamation);
        setDayTime(day, typed);
        m_typed[std::size_t(day - 1)] = typed;
        break;
    case TimeEntry::Outcome::InvalidTime:
        m_state.prompter.tell(title(), tr("Can't Enter This:  Invalid Time Format"), Icon::Exclamation);
        setDayTime(day, QString());
        m_red[std::size_t(day - 1)] = true;
        break;
    }
}

BookedTimes::KeyResult BookedTimes::keyPress(QChar key) {
    m_state.help.setTopic(HelpTopic::BookedTimes);
    if (key == QChar(20) || key == u'+') {
        cmdADD();
        return KeyResult::Consumed;
    }
    if (key == u'-') {
        cmdSUB();
        return KeyResult::Consumed;
    }
    static const QString kTimeKeys = QStringLiteral("\b*,./:;\\");
    if (key.isDigit() || kTimeKeys.contains(key))
        m_booking.touchTimes();
    return KeyResult::ToCell;
}

void BookedTimes::deleteKey() {
    if (readOnly())
        return;
    if (m_column != 0 && isDayRow(m_row))
        setDayTime(m_row, QString());
    else
        m_booking.touchTimes();
}

void BookedTimes::cmdADD() {
    if (readOnly())
        return;
    m_state.help.setTopic(HelpTopic::BookedTimes);
    if (m_row == 0) {
        m_state.prompter.tell(title(), tr("Can't Book Time  - No DAY has been Selected! "),
                              Icon::Exclamation);
        m_timeText.clear();
        return;
    }
    if (isGrey(m_row))
        return;
    if (m_column != 0)
        setDayTime(m_row, m_timeText);
    else
        m_booking.touchTimes();
}

void BookedTimes::cmdSUB() {
    if (readOnly())
        return;
    m_state.help.setTopic(HelpTopic::BookedTimes);
    if (m_column != 0 && isDayRow(m_row))
        setDayTime(m_row, QString());
}

void BookedTimes::cmdCLEARAll() {
    if (readOnly())
        return;
    forgetMarks();
    m_booking.clearTimes();
}

QStringList BookedTimes::timeListItems() {
    QStringList items;
    for (QTime t(6, 0); t <= QTime(22, 0) && t.isValid(); t = t.addSecs(15 * 60)) {
        items << t.toString(QStringLiteral("hh:mm"));
        if (t == QTime(22, 0))
            break;
    }
    return items;
}

void BookedTimes::chooseTime(const QString& text) {
    m_timeText = text;
    m_timeCaption = tr("Select");
}

void BookedTimes::forgetMarks() {
    m_typed.fill(QString());
    m_red.fill(false);
}

int BookedTimes::lastBookedDay() const {
    for (int day = m_days; day >= 1; --day)
        if (!m_booking.time(day).trimmed().isEmpty())
            return day;
    return 0;
}

} // namespace porvane
