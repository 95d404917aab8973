#pragma once

#include <QAbstractButton>
#include <QTest>
#include <QWidget>
#include <functional>
#include <stdexcept>
#include <string>

namespace porvane::test {

// A widget that a test looks for and the window does not have: the test fails, naming both.
struct MissingWidget : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Records the failure and throws MissingWidget (which gtest reports for the test body; from inside a modal
// window's event loop it ends the program with the same text).
[[noreturn]] void missingWidget(const QWidget* window, const char* name, const char* type);

// The widget of that objectName in the window, of type T.
template <typename T = QWidget> T* find(const QWidget* window, const char* name) {
    if (auto* widget = window->findChild<T*>(QString::fromLatin1(name)))
        return widget;
    missingWidget(window, name, T::staticMetaObject.className());
}

// A mouse click on the button of that name, as the operator clicks it.
inline void click(const QWidget* window, const char* name) {
    QTest::mouseClick(find<QAbstractButton>(window, name), Qt::LeftButton);
}

// Keys typed into a widget; characters beyond ASCII arrive as a keyboard layout sends them.
void keys(QWidget* widget, const QString& text);

// Runs act on the next modal window that opens (a dialog, the pass window), while the caller waits in that
// window's exec().
void whenModal(std::function<void(QWidget* modal)> act);

} // namespace porvane::test
