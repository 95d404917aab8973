#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace porvane {

// The data files are single-byte Windows-1252 text so that columns count characters and files written by
// desks on Windows read correctly. This is the only place where their bytes become text and back.
QString fromWindows1252(QByteArrayView bytes);
// A character that Windows-1252 cannot hold is written as "?".
QByteArray toWindows1252(QStringView text);
// True when every character of text has a Windows-1252 byte, so that it can be stored and searched for as
// typed; a text that fails would be stored, and matched, as "?".
bool fitsWindows1252(QStringView text);

} // namespace porvane
