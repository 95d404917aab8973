#include "store/data_paths.h"

#include <QDir>

using namespace Qt::Literals::StringLiterals;

namespace porvane {

QString monthFilePath(const QString& dataPath, const QString& yymm) {
    return QDir(dataPath).filePath(u"Record/"_s + yymm + u".vrf"_s);
}

QString dayStatusPath(const QString& dataPath, const QDate& day) {
    return dayStatusPath(dataPath, day.toString(u"yyMMdd"_s));
}

QString dayStatusPath(const QString& dataPath, const QString& yymmdd) {
    return QDir(dataPath).filePath(u"Status/"_s + yymmdd + u".vdf"_s);
}

QString pickListsPath(const QString& appPath) {
    return QDir(appPath).filePath(u"_PSF/PSystem/PACustom.ini"_s);
}

} // namespace porvane
