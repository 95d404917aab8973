#pragma once

#include <QByteArrayView>
#include <QStringView>
#include <algorithm>
#include <climits>

namespace porvane {

namespace detail {

constexpr int asciiDigit(char16_t c) {
    return c >= u'0' && c <= u'9' ? int(c - u'0') : -1;
}
constexpr int asciiDigit(char c) {
    return asciiDigit(char16_t(static_cast<unsigned char>(c)));
}
constexpr int asciiDigit(QChar c) {
    return asciiDigit(c.unicode());
}
constexpr bool isBlank(char c) {
    return c == ' ';
}
constexpr bool isBlank(QChar c) {
    return c == u' ';
}

template <typename Text, typename Skipped> int leadingNumber(const Text& text, const Skipped& alsoSkipped) {
    auto it = text.begin();
    while (it != text.end() && isBlank(*it))
        ++it;
    int value = 0;
    for (; it != text.end(); ++it) {
        if (std::find(alsoSkipped.begin(), alsoSkipped.end(), *it) != alsoSkipped.end())
            continue;
        const int digit = asciiDigit(*it);
        if (digit < 0)
            break;
        value = value > (INT_MAX - digit) / 10 ? INT_MAX : value * 10 + digit;
    }
    return value;
}

template <typename Text> bool isDigits(const Text& text) {
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](auto c) { return asciiDigit(c) >= 0; });
}

} // namespace detail

// The old desk's number reading, one rule for typed and stored texts: leading blanks are skipped, ASCII
// digits are read as far as they go, and no digit gives 0 ("7a" is 7, "ab" is 0). Characters in alsoSkipped
// are passed over wherever they stand (the lists read "hh:mm" marks and stored dates so). A number beyond int
// reads as the largest int.
inline int leadingNumber(QStringView text, QStringView alsoSkipped = {}) {
    return detail::leadingNumber(text, alsoSkipped);
}
inline int leadingNumber(QByteArrayView text, QByteArrayView alsoSkipped = {}) {
    return detail::leadingNumber(text, alsoSkipped);
}

// One or more ASCII digits and nothing else (other scripts' digits are no digits here).
inline bool isDigits(QStringView text) {
    return detail::isDigits(text);
}
inline bool isDigits(QByteArrayView text) {
    return detail::isDigits(text);
}

} // namespace porvane
