#include "desk/booked_times.h"

#include "desk/date_selection.h"
#include "desk/desk_help.h"

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

BookedTimes::BookedTimes(AppState& state)
    : m_state(state) {}

void BookedTimes::setMonth(int year, int month) {
    const QDate first(year, month, 1);
    if (!first.isValid())
        return;
    m_year = year;
    m_month = month;
    m_days = first.daysInMonth();
    for (int k = m_days; k < int(m_cells.size()); ++k) {
        m_cells[std::size_t(k)].clear();
        m_red[std::size_t(k)] = false;
    }
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
    return isDayRow(day) ? m_cells[std::size_t(day - 1)] : QString();
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
    setHelpContext(m_state, DeskAction::BookedTimes);
}

void BookedTimes::setCellText(int day, const QString& text) {
    if (!isDayRow(day))
        return;
    m_cells[std::size_t(day - 1)] = text;
    if (!text.trimmed().isEmpty())
        m_red[std::size_t(day - 1)] = false;
}

void BookedTimes::validateCell(int day) {
    if (!isDayRow(day))
        return;
    QString& cellText = m_cells[std::size_t(day - 1)];
    const TimeEntry entry = parseTimeEntry(cellText);
    switch (entry.outcome) {
    case TimeEntry::Outcome::Accepted:
        cellText = entry.text;
        break;
    case TimeEntry::Outcome::IncorrectFormat:
        m_state.prompter.tell(title(), tr("Can't Enter This:  Incorrect Time Format"), Icon::Exclamation);
        break;
    case TimeEntry::Outcome::InvalidTime:
        m_state.prompter.tell(title(), tr("Can't Enter This:  Invalid Time Format"), Icon::Exclamation);
        cellText.clear();
        m_red[std::size_t(day - 1)] = true;
        break;
    }
}

BookedTimes::KeyResult BookedTimes::keyPress(QChar key) {
    setHelpContext(m_state, DeskAction::BookedTimes);
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
        m_state.TimesChanged = true;
    return KeyResult::ToCell;
}

void BookedTimes::deleteKey() {
    m_state.TimesChanged = true;
}

void BookedTimes::cmdADD() {
    if (readOnly())
        return;
    setHelpContext(m_state, DeskAction::BookedTimes);
    if (m_row == 0) {
        m_state.prompter.tell(title(), tr("Can't Book Time  - No DAY has been Selected! "),
                              Icon::Exclamation);
        m_timeText.clear();
        return;
    }
    if (isGrey(m_row))
        return;
    if (m_column != 0)
        setCellText(m_row, m_timeText);
    m_state.TimesChanged = true;
}

void BookedTimes::cmdSUB() {
    if (readOnly())
        return;
    setHelpContext(m_state, DeskAction::BookedTimes);
    if (m_column != 0 && isDayRow(m_row)) {
        m_cells[std::size_t(m_row - 1)].clear();
        m_state.TimesChanged = true;
    }
}

void BookedTimes::cmdCLEARAll() {
    if (readOnly())
        return;
    for (int day = 1; day <= m_days; ++day) {
        m_cells[std::size_t(day - 1)].clear();
        m_red[std::size_t(day - 1)] = false;
    }
    m_state.TimesChanged = true;
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

void BookedTimes::showTimes() {
    const auto& times = m_state.record.bookedTimes();
    for (int day = 1; day <= int(m_cells.size()); ++day) {
        const QString stored = times[std::size_t(day - 1)];
        m_red[std::size_t(day - 1)] = false;
        if (day > m_days)
            m_cells[std::size_t(day - 1)].clear();
        else
            m_cells[std::size_t(day - 1)] =
                stored.trimmed().isEmpty() ? stored : stored.left(2) + u':' + stored.right(2);
    }
    m_state.record.MarkRecordSaved();
    m_state.TimesChanged = false;
}

int BookedTimes::lastBookedDay() const {
    for (int day = m_days; day >= 1; --day)
        if (!m_cells[std::size_t(day - 1)].trimmed().isEmpty())
            return day;
    return 0;
}

void BookedTimes::takeTimes() const {
    auto& times = m_state.record.bookedTimes();
    for (std::size_t k = 0; k < times.size(); ++k) {
        const QString text = k < m_cells.size() && int(k) < m_days ? m_cells[k].trimmed() : QString();
        times[k] = text.isEmpty() ? QString() : text.left(2) + text.right(2);
    }
}

} // namespace porvane
