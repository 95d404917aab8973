#include "store/photo_paths.h"

namespace porvane {

QString photoSafeName(const QString& name) {
    QString safe = name;
    for (QChar& c : safe)
        if (c == u'/' || c == u'\\' || c.category() == QChar::Other_Control)
            c = u'_';
    // "." and ".." would name a folder outside the month folder.
    if (safe == u"." || safe == u"..")
        safe.fill(u'_');
    return safe;
}

static QString withSlash(const QString& path) {
    return path.endsWith(u'/') ? path : path + u'/';
}

QString photoMonthFolder(const QString& dataPath, const QString& regNo) {
    return withSlash(dataPath) + QStringLiteral("photo/") + photoSafeName(regNo.left(4)) + u'/';
}

QString photoPath(const QString& dataPath, const QString& regNo, const QString& firstName,
                  const QString& lastName) {
    return photoMonthFolder(dataPath, regNo) + photoSafeName(regNo) + u'_' + photoSafeName(firstName) + u'_' +
           photoSafeName(lastName) + QStringLiteral(".bmp");
}

QString photoPattern(const QString& regNo) {
    return photoSafeName(regNo) + QStringLiteral("_*.bmp");
}

} // namespace porvane
