// The settings record, from the input taken once as the enciphered bytes of a file and once as the plain
// record those bytes should decipher to.
#include "settings/settings_file.h"

#include <cstddef>
#include <cstdint>

using namespace porvane;

namespace {

void decodeAndCheck(const QByteArray& record) {
    Settings settings;
    const SettingsLoad::Status status = decodeSettingsRecord(record, settings);
    if (status == SettingsLoad::Status::Damaged && !settings.DataPath.isEmpty())
        __builtin_trap(); // a damaged record never hands out a data folder
    if (settings.DataPath.size() > 255 || settings.SettingsPassword.size() > 64 ||
        settings.ckMakeSysRdO.size() > 1)
        __builtin_trap();
    if (status == SettingsLoad::Status::Loaded && record.size() < kSettingsRecordLength)
        __builtin_trap();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    QByteArray record(reinterpret_cast<const char*>(data), qsizetype(size));
    decodeAndCheck(record);
    applySettingsCipher(record);
    decodeAndCheck(record);
    return 0;
}
