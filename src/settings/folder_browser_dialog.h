#pragma once

#include <QDialog>

class QFileSystemModel;
class QLineEdit;
class QTreeView;

namespace porvane {

// frmBFF: picks a folder. The caller sets BFFPath, runs the dialog, then reads BFFCancelled and BFFPath.
class FolderBrowserDialog final : public QDialog {
    Q_OBJECT

public:
    explicit FolderBrowserDialog(QWidget* parent = nullptr);

    QString BFFPath;
    bool BFFCancelled = false;

    // Shows BFFPath in the tree; runs modally and fills BFFPath and BFFCancelled.
    int exec() override;
    // The folder selected in the tree.
    QString selectedPath() const;
    void selectPath(const QString& path);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void showSelected();

    QFileSystemModel* m_model;
    QTreeView* m_tree;
    QLineEdit* m_selected;
};

} // namespace porvane
