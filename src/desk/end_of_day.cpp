#include "desk/end_of_day.h"

#include "lists/on_site_list.h"
#include "lists/on_site_rows.h"
#include "store/day_status.h"

namespace porvane {

bool EndOfDay::signOutEveryone(AppState& state) {
    const QString title = QStringLiteral("Porvane 90");
    const BuiltList list = OnSiteList::build(state.files(), state.clock.today());
    const QHash<QString, QString> marks = OnSiteRows::onSiteMarks(list.table);
    if (marks.isEmpty()) {
        state.prompter.tell(title, tr("Nobody is on site now."), Icon::Information);
        return false;
    }
    const QString now = state.clock.now().toString(QStringLiteral("hh:mm"));
    const QString question = marks.size() == 1 ? tr("1 visitor is still on site.")
                                               : tr("%1 visitors are still on site.").arg(marks.size());
    if (state.prompter.ask({title,
                            question + QStringLiteral("\r\n") + tr("Sign them all out at %1?").arg(now),
                            Buttons::YesNo, Icon::Question}) != Answer::Yes)
        return false;
    if (const FileError error = SignOutDayStatus(state.files(), state.clock.today(), marks, now)) {
        state.prompter.tell(title,
                            tr("The departures could not be written to today's status file: %1 (error %2).")
                                .arg(error.text, QString::number(error.number)));
        return false;
    }
    return true;
}

} // namespace porvane
