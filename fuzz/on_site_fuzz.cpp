// The on-site rebuild and list over hostile files: today's month file and today's status file come from the
// input (split at its first 0xFF byte), the status file is rebuilt from them keeping its marks, and the list
// is built from the result.
#include "fuzz_files.h"
#include "lists/on_site_list.h"
#include "store/folder_files.h"

using namespace porvane;

namespace {

struct NoOperator final : LockHolderQuestion {
    LockChoice ask(const LockHolder&) override { return LockChoice::Cancel; }
};

void check(bool ok) {
    if (!ok)
        __builtin_trap();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto* bytes = reinterpret_cast<const char*>(data);
    const auto* split = static_cast<const char*>(std::memchr(bytes, 0xFF, size));
    const std::size_t monthSize = split ? std::size_t(split - bytes) : size;
    const QString month = fuzz::writeInput(QStringLiteral("Record/2402.vrf"), data, monthSize);
    const QString dataPath = fuzz::folderOf(month, 2);
    const QDate today(2024, 2, 10);
    NoOperator noOperator;
    FolderFiles files([&] { return dataPath; }, noOperator);
    const QString status = files.path(LineFileName::dayStatus(today));
    QDir().mkpath(dataPath + QStringLiteral("Status"));
    if (split)
        fuzz::writeInput(QStringLiteral("Status/240210.vdf"), data + monthSize + 1, size - monthSize - 1);
    else
        QFile::remove(status);

    const FileError written = OnSiteList::writeStatusList(files, today);
    // Only a line longer than any booking stops the rebuild.
    check(!written || written.number == FileError::PathFileAccess);
    const BuiltList list = OnSiteList::build(files, today);
    if (written || list.error)
        return 0;
    QFile file(status);
    check(file.open(QIODevice::ReadOnly));
    const QByteArray rebuilt = file.readAll();
    check(rebuilt.isEmpty() || rebuilt.endsWith("\r\n"));
    // Every line the rebuild wrote is a whole booking line, and the list shows each of them.
    qsizetype lines = 0;
    for (const QByteArray& line : rebuilt.split('\n')) {
        if (line.isEmpty())
            continue;
        ++lines;
        check(line.size() >= 1186 + 1 && line.endsWith('\r'));
    }
    check(list.table.listedCount() == lines);
    return 0;
}
