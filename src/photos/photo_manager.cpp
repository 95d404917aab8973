#include "photos/photo_manager.h"

#include "photos/photo_files.h"
#include "store/line_reader.h"
#include "store/photo_paths.h"
#include "store/record_line.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace porvane {

namespace {

const QString kTitle = QStringLiteral("Porvane 90");
const QString kCrLf = QStringLiteral("\r\n");

} // namespace

QString PhotoManager::caption() const {
    const QString regNo = m_state.record[Field::RegNo].trimmed();
    if (regNo.isEmpty())
        return tr("Manage Photo");
    return tr("Manage Photo  [ %1 ]").arg(regNo);
}

template <typename Keep> QList<PhotoRow> PhotoManager::scan(const QStringList& months, Keep keep) const {
    QList<PhotoRow> rows;
    const QDateTime now = m_state.clock.now();
    for (const QString& month : months) {
        // A month with no bookings has no file; listing takes no lock and reads what is there.
        const std::unique_ptr<LineReader> reader = m_state.files().read(LineFileName::month(month));
        QByteArrayView bytes;
        while (reader->next(bytes)) {
            const RecordLine line(bytes);
            if (line.regNo().isEmpty() || !keep(line))
                continue;
            PhotoRow row;
            row.regNo = line.trimmed(Field::RegNo);
            row.firstName = line.trimmed(Field::FirstName);
            row.lastName = line.trimmed(Field::LastName);
            row.path = photoPath(m_state.dataPath(), row.regNo, row.firstName, row.lastName);
            if (!QFileInfo(row.path).isFile())
                continue;
            row.name = row.firstName + u' ' + row.lastName;
            row.organisation = line.trimmed(Field::Organisation);
            row.passIssued = line.trimmed(Field::PassIssued);
            const PhotoFileTime t = photoFileTime(row.path);
            row.taken = t.date + u' ' + t.time;
            row.age = t.moment.isValid() ? photoAge(t.moment, now) : QString();
            rows.append(row);
        }
    }
    return rows;
}

QList<PhotoRow> PhotoManager::list(const QStringList& months, int day) const {
    return scan(months, [day](const RecordLine& line) { return day < 1 || !line.bookedSlot(day).isEmpty(); });
}

QList<PhotoRow> PhotoManager::find(const QStringList& months, const QString& text) const {
    const QString wanted = text.trimmed();
    if (wanted.isEmpty())
        return {};
    return scan(months, [&wanted](const RecordLine& line) {
        for (Field f : {Field::FirstName, Field::LastName, Field::Organisation})
            if (line.trimmed(f).contains(wanted, Qt::CaseInsensitive))
                return true;
        return false;
    });
}

QString PhotoManager::countLine(qsizetype count) {
    if (count == 0)
        return tr("No Photos Found");
    if (count == 1)
        return tr("One Photo Found");
    return tr("%1 Photos Found").arg(count);
}

QString PhotoManager::show(const PhotoRow& row) {
    if (QFileInfo(row.path).size() <= kPhotoSizeLimit)
        return row.path;
    m_state.prompter.tell(kTitle, tr("Video Setup Error: Resolution settings are too high for Porvane"));
    return placeholderImage();
}

bool PhotoManager::attach(const PhotoRow& selected) {
    if (!changesAllowed() || selected.regNo.size() != 12)
        return false;
    CurrentRecord& r = m_state.record;
    const QString current = r[Field::FirstName].trimmed() + u' ' + r[Field::LastName].trimmed();
    if (selected.name != current &&
        m_state.prompter.ask({kTitle,
                              tr("This will attach a photo to an individual with a different name!  ") +
                                  kCrLf + tr("Do you still wish to proceed?"),
                              Buttons::YesNo, Icon::Exclamation}) != Answer::Yes)
        return false;
    const QString question =
        tr("This will attach the following photo to the Current File: ") + kCrLf + kCrLf +
        tr("The Photo for: ") + kCrLf + selected.name + QStringLiteral("  [ ") + selected.regNo +
        QStringLiteral(" ] - ") + u'(' + selected.organisation + u')' + kCrLf + kCrLf +
        tr("Will attach to, and be used for:") + kCrLf + r[Field::FirstName] + u' ' + r[Field::LastName] +
        QStringLiteral("  [ ") + r[Field::RegNo] + QStringLiteral(" ] - ") + u'(' + r[Field::Organisation] +
        u')' + kCrLf + kCrLf +
        tr("Please note: Attaching a photo in this way will not detach it from the original file, a new copy "
           "photo will be created so that each file will have its own (identical) photo.  Do you wish to "
           "proceed?");
    if (m_state.prompter.ask({kTitle, question, Buttons::YesNoCancel, Icon::Question}) != Answer::Yes)
        return false;

    // A copy, never a move: the other booking keeps its own photo.
    QFile source(selected.path);
    const QByteArray bytes = source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
    const QString target =
        photoPath(m_state.dataPath(), r[Field::RegNo], r[Field::FirstName], r[Field::LastName]);
    if (bytes.isEmpty() || source.error() != QFileDevice::NoError ||
        replacePhotoFile(m_state.dataPath(), m_state.prompter, target, bytes)) {
        m_state.prompter.tell(kTitle,
                              tr("Can't attach photo: The file may be locked by another application"));
        return false;
    }
    r[Field::PhotoOnFile] = QStringLiteral("1");
    return true;
}

bool PhotoManager::removePhotos(const QString& regNo) {
    QDir folder(photoMonthFolder(m_state.dataPath(), regNo));
    const QString stem = photoSafeName(regNo) + u'_';
    // Matched by hand rather than by wildcard, so a name can never widen the pattern.
    auto matching = [&] {
        QStringList out;
        for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden | QDir::System))
            if (name.startsWith(stem) && name.endsWith(QStringLiteral(".bmp"), Qt::CaseInsensitive))
                out << name;
        return out;
    };
    for (const QString& name : matching())
        folder.remove(name);
    return matching().isEmpty();
}

void PhotoManager::photoGone(const QString& regNo) {
    // Only the current booking's own flag changes; the pass window looks at the files themselves.
    if (regNo == m_state.record[Field::RegNo].trimmed())
        m_state.record[Field::PhotoOnFile] = QStringLiteral("0");
}

QString PhotoManager::deleteOne(const PhotoRow& row) {
    if (!changesAllowed() || row.regNo.isEmpty())
        return {};
    if (m_state.prompter.ask({kTitle, tr("This will permanently delete the photo for %1").arg(row.name),
                              Buttons::OkCancel, Icon::Exclamation}) != Answer::Ok)
        return {};
    if (!removePhotos(row.regNo)) {
        m_state.prompter.tell(kTitle,
                              tr("Can't delete photo: It may be locked or removed by another application"));
        return {};
    }
    photoGone(row.regNo);
    return tr("Photo Deleted");
}

QString PhotoManager::deleteListed(const QList<PhotoRow>& rows) {
    if (!changesAllowed())
        return {};
    if (m_state.prompter.ask({kTitle, tr("This will permanently delete ALL PHOTOS currently listed"),
                              Buttons::OkCancel, Icon::Exclamation}) != Answer::Ok)
        return {};
    int left = 0;
    for (const PhotoRow& row : rows) {
        if (removePhotos(row.regNo))
            photoGone(row.regNo);
        else
            ++left;
    }
    if (left == 0)
        return tr("Photos Deleted");
    if (left == 1)
        return tr("One Photo could not be deleted: It may be locked or already removed");
    return tr("%1 items could not be deleted, these may be locked or already removed").arg(left);
}

} // namespace porvane
