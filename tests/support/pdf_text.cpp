#include "pdf_text.h"

#include <QProcess>
#include <QXmlStreamReader>

namespace porvane::test {

namespace {

QByteArray run(const QString& program, const QStringList& args) {
    QProcess p;
    p.start(program, args);
    p.waitForFinished(120000);
    return p.readAllStandardOutput();
}

bool sameLine(const QRectF& a, const QRectF& b) {
    return std::abs(a.center().y() - b.center().y()) < a.height() / 2;
}

} // namespace

QList<PdfPage> readPdf(const QString& file) {
    QList<PdfPage> pages;
    QXmlStreamReader xml(
        run(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), file, QStringLiteral("-")}));
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"page") {
            pages.append(PdfPage{});
        } else if (xml.name() == u"word" && !pages.isEmpty()) {
            const auto at = [&](const char* name) {
                return xml.attributes().value(QLatin1StringView(name)).toDouble();
            };
            const QPointF topLeft(at("xMin"), at("yMin"));
            const QPointF bottomRight(at("xMax"), at("yMax"));
            pages.last().words.append({xml.readElementText(), QRectF(topLeft, bottomRight)});
        }
    }
    const QStringList texts = QString::fromUtf8(run(QStringLiteral("pdftotext"),
                                                    {QStringLiteral("-layout"), file, QStringLiteral("-")}))
                                  .split(u'\f');
    for (qsizetype p = 0; p < pages.size() && p < texts.size(); ++p)
        pages[p].text = texts[p];
    return pages;
}

QString pdfTool(const QString& program, const QStringList& args) {
    return QString::fromUtf8(run(program, args));
}

bool PdfPage::holdsWhole(const QString& cell, bool oneLine) const {
    const QString wanted = cell.simplified();
    // Where the wanted text goes on after `at` when `word` follows, or -1.
    const auto follows = [&](qsizetype at, const QString& word) -> qsizetype {
        if (at > 0 && wanted.at(at) == u' ')
            ++at;
        return QStringView(wanted).sliced(at).startsWith(word) ? at + word.size() : -1;
    };
    for (const PdfWord& first : words) {
        qsizetype at = follows(0, first.text);
        if (at < 0)
            continue;
        QRectF last = first.box;
        QRectF cellBox = first.box;
        while (at >= 0 && at < wanted.size()) {
            const bool blank = wanted.at(at) == u' ';
            qsizetype next = -1;
            for (const PdfWord& w : words) {
                const bool onLine = sameLine(last, w.box) && w.box.left() >= last.right() - 0.1 &&
                                    w.box.left() - last.right() < last.height();
                const bool below = !oneLine && w.box.top() > last.center().y() &&
                                   w.box.top() - last.bottom() < last.height() &&
                                   w.box.left() < cellBox.right() && w.box.right() > cellBox.left();
                // A blank in the text shows as a gap or a line break, a hyphen's break only as a line break.
                if ((onLine && blank) || below) {
                    next = follows(at, w.text);
                    if (next >= 0) {
                        last = w.box;
                        cellBox |= w.box;
                        break;
                    }
                }
            }
            at = next;
        }
        if (at == wanted.size())
            return true;
    }
    return false;
}

int PdfPage::count(const QString& word) const {
    return int(std::count_if(words.begin(), words.end(), [&](const PdfWord& w) { return w.text == word; }));
}

QStringList PdfPage::overlapping() const {
    QStringList out;
    for (qsizetype i = 0; i < words.size(); ++i)
        for (qsizetype j = i + 1; j < words.size(); ++j)
            if (sameLine(words[i].box, words[j].box) && words[i].box.intersects(words[j].box))
                out.append(words[i].text + u'/' + words[j].text);
    return out;
}

} // namespace porvane::test
