#include "settings/folder_browser_dialog.h"
#include "widgets.h"

#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <gtest/gtest.h>

using namespace porvane;
using namespace Qt::Literals::StringLiterals;

namespace {

// Runs the dialog modally and presses one of its buttons once it is up.
void runAndPress(FolderBrowserDialog& dialog, const char* button) {
    QTimer::singleShot(0, &dialog, [&dialog, button] { test::find<QPushButton>(&dialog, button)->click(); });
    dialog.exec();
}

} // namespace

TEST(FolderBrowser, cancelKeepsThePath_okReturnsTheSelectedFolder_andOnlyAPathWiderThanTheBoxGetsATooltip) {
    QTemporaryDir root;
    const QString deep =
        root.path() + u"/Porvanedata/a-rather-long-folder-name/and-another-one-below-it/and-more"_s;
    ASSERT_TRUE(QDir().mkpath(deep));

    FolderBrowserDialog dialog;
    dialog.BFFPath = root.path();
    runAndPress(dialog, "cmdBFFCancel");
    EXPECT_TRUE(dialog.BFFCancelled);
    EXPECT_EQ(dialog.BFFPath, root.path());

    dialog.BFFPath = deep;
    runAndPress(dialog, "cmdBFFOK");
    EXPECT_FALSE(dialog.BFFCancelled);
    EXPECT_EQ(dialog.BFFPath, deep);

    dialog.resize(420, 460);
    dialog.show();
    auto* box = test::find<QLineEdit>(&dialog, "txtBFFSelectedF");
    dialog.selectPath(deep);
    EXPECT_EQ(box->text(), deep);
    EXPECT_EQ(box->toolTip(), deep);
    dialog.selectPath(QDir::rootPath());
    EXPECT_EQ(box->text(), QDir::rootPath());
    EXPECT_TRUE(box->toolTip().isEmpty());
}
