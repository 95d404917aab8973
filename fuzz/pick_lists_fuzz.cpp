// The pick lists file as both windows read it.
#include "fuzz_files.h"
#include "store/pick_lists.h"

using namespace porvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString path = fuzz::writeInput(QStringLiteral("PACustom.ini"), data, size);
    for (const PickLists& lists : {LoadMainPickLists(path), LoadDetailPickLists(path)})
        for (const QStringList* list : {&lists.first, &lists.second})
            for (const QString& entry : *list)
                if (!entry.startsWith(u' ') || entry.size() < 2)
                    __builtin_trap(); // every entry is a non-empty line with its one blank in front
    return 0;
}
