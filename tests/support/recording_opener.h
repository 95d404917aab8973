#pragma once

#include "app/help_topics.h"

#include <QList>
#include <QUrl>

namespace porvane::test {

// Records the help address instead of starting a browser.
struct RecordingOpener final : UrlOpener {
    QList<QUrl> opened;
    bool open(const QUrl& url) override {
        opened << url;
        return true;
    }
};

} // namespace porvane::test
