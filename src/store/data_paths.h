#pragma once

#include <QDate>
#include <QString>

namespace porvane {

// <data>/Record/<yymm>.vrf: the bookings of one month.
QString monthFilePath(const QString& dataPath, const QString& yymm);
// <data>/Status/<yymmdd>.vdf: the arrivals and departures of one day.
QString dayStatusPath(const QString& dataPath, const QDate& day);
QString dayStatusPath(const QString& dataPath, const QString& yymmdd);
// <app>/_PSF/PSystem/PACustom.ini: the site's pick lists.
QString pickListsPath(const QString& appPath);

} // namespace porvane
