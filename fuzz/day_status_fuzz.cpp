// Today's status file as the editor reads a booking's arrival and departure from it. The key looked for is
// the first line's own first twelve characters, so matching lines are common.
#include "fuzz_files.h"
#include "store/day_status.h"
#include "store/folder_files.h"

using namespace porvane;

namespace {

struct NoOperator final : LockHolderQuestion {
    LockChoice ask(const LockHolder&) override { return LockChoice::Cancel; }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString path = fuzz::writeInput(QStringLiteral("Status/240210.vdf"), data, size);
    const QString dataPath = fuzz::folderOf(path, 2);
    const QByteArray head =
        QByteArray(reinterpret_cast<const char*>(data), qsizetype(std::min<std::size_t>(size, 12)));
    NoOperator noOperator;
    FolderFiles files([&] { return dataPath; }, noOperator);
    const SiteTimes times = readSiteTimes(files, QDate(2024, 2, 10), QString::fromLatin1(head));
    if (times.arrival.size() > 4 || times.departure.size() > 4 || (!times.found && !times.arrival.isEmpty()))
        __builtin_trap();
    return 0;
}
