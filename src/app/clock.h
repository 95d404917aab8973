#pragma once

#include <QDateTime>

namespace porvane {

// Identifiers, today's status file, pass dates and list colours all depend on "now"; tests fix it.
class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
    QDate today() const { return now().date(); }
};

class SystemClock final : public Clock {
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};

class FixedClock final : public Clock {
public:
    explicit FixedClock(QDateTime moment)
        : m_moment(std::move(moment)) {}
    QDateTime now() const override { return m_moment; }
    void set(const QDateTime& moment) { m_moment = moment; }
    void advanceSeconds(qint64 seconds) { m_moment = m_moment.addSecs(seconds); }

private:
    QDateTime m_moment;
};

} // namespace porvane
