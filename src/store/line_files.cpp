#include "store/line_files.h"

using namespace Qt::Literals::StringLiterals;

namespace porvane {

LineFileName LineFileName::month(const QDate& date) {
    return month(date.toString(u"yyMM"_s));
}

LineFileName LineFileName::dayStatus(const QDate& day) {
    return {Kind::DayStatus, day.toString(u"yyMMdd"_s)};
}

} // namespace porvane
