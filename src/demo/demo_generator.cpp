#include "demo/demo_generator.h"

#include "store/current_record.h"
#include "store/data_lock.h"
#include "store/data_paths.h"
#include "store/record_line.h"
#include "store/safe_file.h"

#include <array>
#include <random>

namespace porvane {

namespace {

constexpr std::array kFirstNames{"James",  "Mary",    "Robert", "Patricia", "John",  "Jennifer", "Michael",
                                 "Linda",  "David",   "Susan",  "Ahmed",    "Priya", "Chen",     "Olga",
                                 "Kwame",  "Siobhan", "Tomas",  "Aisha",    "Lars",  "Mei",      "Rhys",
                                 "Fatima", "Ewan",    "Ingrid", "Raj",      "Zoe",   "Pavel",    "Nia",
                                 "Connor", "Yuki",    "Dara",   "Amara"};
constexpr std::array kLastNames{"Smith",     "Jones",    "Taylor",     "Brown",   "Williams", "Wilson",
                                "Johnson",   "Davies",   "Patel",      "Wright",  "Thompson", "Evans",
                                "Walker",    "Roberts",  "Khan",       "O'Neill", "Nowak",    "Okafor",
                                "Lindqvist", "Nakamura", "Fitzgerald", "Moreau",  "Rossi",    "Schmidt",
                                "Kowalski",  "Mensah",   "Goldsmith",  "Hughes"};
constexpr std::array kOrgStems{"Northgate", "Riverside", "Apex",    "Harbour", "Crown",   "Summit",
                               "Meridian",  "Oakfield",  "Granite", "Beacon",  "Kestrel", "Lakeside"};
constexpr std::array kOrgTrades{"Engineering", "Logistics", "Electrical", "Catering", "Security",
                                "Consulting",  "Plumbing",  "Couriers",   "Software", "Scaffolding"};
constexpr std::array kOrgForms{"Ltd", "plc", "& Sons", "Group", "Services", "LLP"};
constexpr std::array kTowns{"Leeds", "Bristol", "Derby", "Norwich", "Chester", "Exeter", "Perth", "Bath"};
constexpr std::array kVisiting{"Reception",       "J. Harper",   "S. Malik",
                               "Facilities Desk", "R. O'Connor", "Site Manager"};
constexpr std::array kLocations{"Main Building", "Block B",   "Warehouse 2",
                                "Lab 4",         "Gatehouse", "North Annex"};

using Rng = std::mt19937;

template <typename Array> QString pick(Rng& rng, const Array& values) {
    return QString::fromUtf8(values[std::uniform_int_distribution<std::size_t>(0, values.size() - 1)(rng)]);
}

QString pick(Rng& rng, const QStringList& values, const char* fallback) {
    if (values.isEmpty())
        return QString::fromUtf8(fallback);
    return values[std::uniform_int_distribution<qsizetype>(0, values.size() - 1)(rng)].trimmed();
}

int between(Rng& rng, int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(rng);
}

QString digits(Rng& rng, int count) {
    QString out;
    for (int i = 0; i < count; ++i)
        out += QChar(u'0' + between(rng, 0, 9));
    return out;
}

QString two(int n) {
    return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'));
}

} // namespace

DemoGenerator::DemoGenerator(Options options)
    : m_options(std::move(options)) {}

QByteArray DemoGenerator::monthFile(int monthIndex) const {
    const QDate start = monthStart(monthIndex);
    // One stream per month, so a month's file does not depend on how many months came before it.
    Rng rng(m_options.seed * 7919u + std::uint32_t(start.year() * 12 + start.month()));
    const QString yymm = two(start.year() % 100) + two(start.month());
    const int days = start.daysInMonth();

    QByteArray out;
    out.reserve(qsizetype(m_options.perMonth) * (kRecordLineLength + 2));
    CurrentRecord r;
    for (int i = 0; i < m_options.perMonth; ++i) {
        r.ClearRecord();
        // Creation times a few seconds apart keep identifiers unique within the month.
        const int second = i * 7 + between(rng, 0, 5);
        const int day = std::min(days, 1 + second / 86400);
        const int inDay = second % 86400;
        r[Field::RegNo] = yymm + two(day) + two(inDay / 3600) + two(inDay / 60 % 60) + two(inDay % 60);
        r[Field::FirstName] = pick(rng, kFirstNames);
        r[Field::LastName] = pick(rng, kLastNames);
        r[Field::Gender] = between(rng, 0, 1) ? QStringLiteral("M") : QStringLiteral("F");
        r[Field::MobileTel] = QStringLiteral("07") + digits(rng, 3) + u' ' + digits(rng, 6);
        if (between(rng, 0, 2) == 0)
            r[Field::CarReg] = QStringLiteral("%1%2 %3")
                                   .arg(QChar(u'A' + between(rng, 0, 25)))
                                   .arg(QChar(u'A' + between(rng, 0, 25)))
                                   .arg(digits(rng, 2) + QChar(u'A' + between(rng, 0, 25)) +
                                        QChar(u'A' + between(rng, 0, 25)));
        r[Field::Category] = pick(rng, m_options.categories, "VISITOR");
        r[Field::Department] = pick(rng, m_options.departments, "RECEPTION");
        const QString org = pick(rng, kOrgStems) + u' ' + pick(rng, kOrgTrades) + u' ' + pick(rng, kOrgForms);
        r[Field::Organisation] = org;
        r[Field::PartySize] = between(rng, 0, 9) == 0 ? QString::number(between(rng, 2, 12)) : QString();
        r[Field::OrgAddress] =
            QString::number(between(rng, 1, 220)) + QStringLiteral(" High Street, ") + pick(rng, kTowns);
        r[Field::OrgDirectTel] = QStringLiteral("01") + digits(rng, 3) + u' ' + digits(rng, 6);
        r[Field::OrgEmail] =
            QStringLiteral("info@") + org.section(u' ', 0, 0).toLower() + QStringLiteral(".example");
        r[Field::Visiting] = pick(rng, kVisiting);
        r[Field::VisitingTel] = QStringLiteral("Ext. ") + digits(rng, 4);
        r[Field::Location] = pick(rng, kLocations);
        r[Field::PhotoOnFile] = QStringLiteral("0");

        // One to three working days of the month, each with a time between 07:00 and 17:45.
        const int visits = between(rng, 1, 3);
        for (int v = 0; v < visits; ++v) {
            int d = between(rng, 1, days);
            while (start.addDays(d - 1).dayOfWeek() > 5)
                d = d % days + 1;
            const int quarter = between(rng, 28, 71);
            r.bookedTimes()[std::size_t(d - 1)] = two(quarter / 4) + two(quarter % 4 * 15);
        }

        if (m_options.passEvery > 0 && between(rng, 1, m_options.passEvery) == 1) {
            const QDate from = start.addDays(between(rng, 0, days - 1));
            const int count = between(rng, 1, 3);
            const int unit = between(rng, 0, 2);
            const QDate to = unit == 0   ? from.addDays(count)
                             : unit == 1 ? from.addDays(7 * count)
                                         : from.addMonths(count);
            r[Field::PassStart] = from.toString(QStringLiteral("dd-MM-yyyy"));
            r[Field::PassEnd] = to.toString(QStringLiteral("dd-MM-yyyy"));
            r[Field::PassPeriod] = QString::number(count) + QStringLiteral("DWM")[unit];
            r[Field::PassIssued] = from.toString(QStringLiteral("dd-MM-yyyy")) + QStringLiteral(" at ") +
                                   two(between(rng, 7, 17)) + u':' + two(between(rng, 0, 59));
        }
        out += encodeRecordLine(r);
        out += "\r\n";
    }
    return out;
}

FileError DemoGenerator::appendTo(const QString& dataPath, LockHolderQuestion& lockQuestion) const {
    for (int i = 0; i < m_options.months; ++i) {
        const QByteArray block = monthFile(i);
        if (block.isEmpty())
            continue;
        DataLock lock(dataPath);
        if (FileError error = takeDataLock(lock, lockQuestion))
            return error;
        // One append of the whole month: the block's last line end comes from the append itself.
        if (FileError error = appendLine(
                monthFilePath(dataPath, monthStart(i).toString(QStringLiteral("yyMM"))), block.chopped(2)))
            return error;
    }
    return {};
}

} // namespace porvane
