#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <array>

namespace porvane {

// The data files are single-byte Windows-1252 text so that columns count characters and files written by
// desks on Windows read correctly. This is the only place where their bytes become text and back.
QString fromWindows1252(QByteArrayView bytes);
// A character that Windows-1252 cannot hold is written as "?".
QByteArray toWindows1252(QStringView text);
// True when every character of text has a Windows-1252 byte, so that it can be stored and searched for as
// typed; a text that fails would be stored, and matched, as "?".
bool fitsWindows1252(QStringView text);

// Windows-1252 is single-byte: upper-case letters (ASCII, Latin-1 and the four in 0x80..0x9F) fold to
// their lower-case partners, so a find text is converted once and lines are compared byte by byte. Every
// search folds case so, on the desk and on the server.
constexpr std::array<unsigned char, 256> makeWindows1252Fold() {
    std::array<unsigned char, 256> fold{};
    for (int b = 0; b < 256; ++b)
        fold[std::size_t(b)] = static_cast<unsigned char>(b);
    for (int b = 'A'; b <= 'Z'; ++b)
        fold[std::size_t(b)] = static_cast<unsigned char>(b + 0x20);
    for (int b = 0xC0; b <= 0xDE; ++b)
        if (b != 0xD7)
            fold[std::size_t(b)] = static_cast<unsigned char>(b + 0x20);
    fold[0x8A] = 0x9A; // Š š
    fold[0x8C] = 0x9C; // Œ œ
    fold[0x8E] = 0x9E; // Ž ž
    fold[0x9F] = 0xFF; // Ÿ ÿ
    return fold;
}
inline constexpr std::array<unsigned char, 256> kWindows1252Fold = makeWindows1252Fold();

} // namespace porvane
