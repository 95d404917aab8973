#include "widgets.h"

#include <QApplication>
#include <QTimer>
#include <gtest/gtest.h>
#include <iostream>
#include <memory>

namespace porvane::test {

void missingWidget(const QWidget* window, const char* name, const char* type) {
    const std::string text = std::string("no ") + type + " named \"" + name + "\" in the window \"" +
                             window->objectName().toStdString() + "\" (" + window->metaObject()->className() +
                             ")";
    ADD_FAILURE() << text;
    std::cerr << text << '\n';
    throw MissingWidget(text);
}

void keys(QWidget* widget, const QString& text) {
    for (const QChar c : text) {
        if (c.unicode() < 0x80)
            QTest::keyClick(widget, char(c.unicode()));
        else
            QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, QString(c), Qt::NoModifier);
    }
}

void whenModal(std::function<void(QWidget* modal)> act) {
    auto poll = std::make_shared<std::function<void()>>();
    *poll = [act = std::move(act), poll] {
        if (QWidget* modal = QApplication::activeModalWidget())
            act(modal);
        else
            QTimer::singleShot(10, *poll);
    };
    QTimer::singleShot(10, *poll);
}

} // namespace porvane::test
