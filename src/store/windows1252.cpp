#include "store/windows1252.h"

#include <algorithm>
#include <array>

namespace porvane {
namespace {

// 0x80..0x9F; the five undefined positions map to the C1 control of the same value so that bytes round-trip.
constexpr std::array<char16_t, 32> kHighControls{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

constexpr int kNoByte = -1;

int byteOf(char16_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return c;
    for (std::size_t i = 0; i < kHighControls.size(); ++i)
        if (kHighControls[i] == c)
            return int(0x80 + i);
    return kNoByte;
}

char encodeOne(char16_t c) {
    const int b = byteOf(c);
    return b == kNoByte ? '?' : char(b);
}

} // namespace

QString fromWindows1252(QByteArrayView bytes) {
    QString text(bytes.size(), Qt::Uninitialized);
    QChar* out = text.data();
    for (const char b : bytes) {
        const auto u = static_cast<unsigned char>(b);
        *out++ = QChar(u >= 0x80 && u < 0xA0 ? kHighControls[u - 0x80] : char16_t(u));
    }
    return text;
}

QByteArray toWindows1252(QStringView text) {
    QByteArray bytes(text.size(), Qt::Uninitialized);
    char* out = bytes.data();
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        // A character outside the basic plane is one "?", not two, so the columns after it stay in place.
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            ++i;
        *out++ = encodeOne(c.unicode());
    }
    bytes.truncate(out - bytes.constData());
    return bytes;
}

bool fitsWindows1252(QStringView text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return byteOf(c.unicode()) != kNoByte; });
}

} // namespace porvane
