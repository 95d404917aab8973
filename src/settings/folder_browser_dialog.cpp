#include "settings/folder_browser_dialog.h"

#include <QDir>
#include <QFileSystemModel>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace porvane {

FolderBrowserDialog::FolderBrowserDialog(QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmBFF"));
    setWindowTitle(tr("Browse for Folder"));
    m_model = new QFileSystemModel(this);
    m_model->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot | QDir::Drives);
    m_model->setRootPath(QDir::rootPath());
    m_tree = new QTreeView(this);
    m_tree->setObjectName(QStringLiteral("ftvbff"));
    m_tree->setModel(m_model);
    for (int c = 1; c < m_model->columnCount(); ++c)
        m_tree->hideColumn(c);
    m_tree->header()->hide();
    m_selected = new QLineEdit(this);
    m_selected->setObjectName(QStringLiteral("txtBFFSelectedF"));
    m_selected->setReadOnly(true);
    auto* ok = new QPushButton(tr("OK"), this);
    ok->setObjectName(QStringLiteral("cmdBFFOK"));
    ok->setDefault(true);
    auto* cancel = new QPushButton(tr("Cancel"), this);
    cancel->setObjectName(QStringLiteral("cmdBFFCancel"));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tree, 1);
    layout->addWidget(m_selected);
    layout->addLayout(buttons);
    resize(420, 460);

    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &FolderBrowserDialog::showSelected);
    connect(ok, &QPushButton::clicked, this, [this] {
        BFFCancelled = false;
        BFFPath = selectedPath();
        accept();
    });
    connect(cancel, &QPushButton::clicked, this, [this] {
        BFFCancelled = true;
        reject();
    });
}

int FolderBrowserDialog::exec() {
    BFFCancelled = false;
    selectPath(BFFPath);
    const int result = QDialog::exec();
    if (result != Accepted)
        BFFCancelled = true;
    return result;
}

QString FolderBrowserDialog::selectedPath() const {
    return m_model->filePath(m_tree->currentIndex());
}

void FolderBrowserDialog::selectPath(const QString& path) {
    const QModelIndex index = m_model->index(path);
    m_tree->setCurrentIndex(index);
    m_tree->scrollTo(index);
    showSelected();
}

void FolderBrowserDialog::showSelected() {
    const QString path = selectedPath();
    m_selected->setText(path);
    // A path wider than the box can still be read whole from its tool tip.
    const bool cut =
        m_selected->fontMetrics().horizontalAdvance(path) > m_selected->contentsRect().width() - 8;
    m_selected->setToolTip(cut ? path : QString());
}

void FolderBrowserDialog::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    showSelected();
}

} // namespace porvane
