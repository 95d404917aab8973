// The month file as the lists and the editor read it: lines streamed, each decoded into a booking and checked
// the way porvane-admin verify checks it.
#include "fuzz_files.h"
#include "store/current_record.h"
#include "store/data_check.h"
#include "store/line_reader.h"
#include "store/record_line.h"

using namespace porvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString path = fuzz::writeInput(QStringLiteral("Record/2402.vrf"), data, size);
    LineReader reader(path);
    QByteArrayView bytes;
    CurrentRecord record;
    qsizetype seen = 0;
    while (reader.next(bytes)) {
        seen += bytes.size();
        const RecordLine line(bytes);
        decodeRecordLine(line, record);
        // Whatever was read, the line written back from it has the one fixed length, and reads back as
        // the same booking: decoding a written line and writing it again gives back that line. (A booked time
        // is stored as the first two and last two characters of its text, so a slot of one to three
        // characters, which no grid time gives, grows on each writing; such lines are left out.)
        const QByteArray written = encodeRecordLine(record);
        if (written.size() != kRecordLineLength)
            __builtin_trap();
        bool wholeSlots = true;
        for (int day = 1; day <= kBookedSlotCount; ++day) {
            const qsizetype filled = trimBlanks(RecordLine(written).columns(bookedSlotColumn(day), 4)).size();
            wholeSlots = wholeSlots && (filled == 0 || filled == kBookedSlotWidth);
        }
        CurrentRecord reread;
        decodeRecordLine(RecordLine(written), reread);
        if (wholeSlots && encodeRecordLine(reread) != written)
            __builtin_trap();
        for (int day = 1; day <= kBookedSlotCount; ++day)
            if (line.bookedSlot(day).size() > kBookedSlotWidth)
                __builtin_trap();
        checkStoredLine(bytes, QStringLiteral("2402"), true);
        checkStoredLine(bytes, QStringLiteral("240210"), false);
    }
    if (seen > qsizetype(size) || !reader.error().ok())
        __builtin_trap();
    return 0;
}
