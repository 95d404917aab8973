#include "demo/demo_offer.h"

#include "demo/demo_generator.h"
#include "store/data_paths.h"
#include "store/pick_lists.h"

#include <QFileInfo>
#include <QLocale>

namespace porvane {

bool DemoOffer::run(AppState& state, QDate month) {
    const QString title = QStringLiteral("Porvane 90");
    if (!month.isValid()) {
        state.prompter.tell(title, tr("Choose a valid month in the date boxes first."));
        return false;
    }
    const QString name = QLocale(QLocale::English).toString(month, QStringLiteral("MMMM yyyy")).toUpper();
    if (state.settings.ReadOnlyMode()) {
        state.prompter.tell(title, tr("The desk is read only; no demonstration bookings can be added."));
        return false;
    }
    const QString file = monthFilePath(state.dataPath(), month.toString(QStringLiteral("yyMM")));
    if (QFileInfo(file).size() > 0) {
        state.prompter.tell(title,
                            tr("%1 already holds bookings. Demonstration bookings are only added to a month "
                               "without any; choose an empty month first.")
                                .arg(name),
                            Icon::Information);
        return false;
    }
    if (state.prompter.ask({title,
                            tr("Add %1 invented demonstration bookings to %2?\nThey are saved like real "
                               "bookings and can be deleted with bulk deletion.")
                                .arg(kBookings)
                                .arg(name),
                            Buttons::OkCancel, Icon::Question}) != Answer::Ok)
        return false;

    DemoGenerator::Options options;
    options.fromYear = month.year();
    options.fromMonth = month.month();
    options.perMonth = kBookings;
    options.seed = std::uint32_t(state.clock.now().toSecsSinceEpoch());
    const PickLists lists = LoadMainPickLists(pickListsPath(state.AppPath));
    options.categories = lists.first;
    options.departments = lists.second;
    if (const FileError error = DemoGenerator(options).appendTo(state.dataPath(), state.lockQuestion)) {
        state.prompter.tell(title, tr("The demonstration bookings could not be written: %1 (error %2).")
                                       .arg(error.text)
                                       .arg(error.number));
        return false;
    }
    state.prompter.tell(title, tr("%1 demonstration bookings were added to %2.").arg(kBookings).arg(name),
                        Icon::Information);
    return true;
}

} // namespace porvane
