#pragma once

#include <QString>

namespace porvane {

// A visitor's photo lives at <data>/photo/<YYMM>/<RegNo>_<FirstName>_<LastName>.bmp; the file name is the
// only record of its owner. A "/", "\" or control character in a name becomes "_", so no photo is ever
// written or deleted outside its month folder.
QString photoSafeName(const QString& name);
// <data>/photo/<first four characters of RegNo>/
QString photoMonthFolder(const QString& dataPath, const QString& regNo);
QString photoPath(const QString& dataPath, const QString& regNo, const QString& firstName,
                  const QString& lastName);
// The pattern that finds every photo of a booking whatever names it carries: "<RegNo>_*.bmp".
QString photoPattern(const QString& regNo);

} // namespace porvane
