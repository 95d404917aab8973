#include "lists/multi_delete_window.h"

#include "lists/date_selection.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <array>

namespace porvane {

namespace {

template <typename W> W* withName(W* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

QComboBox* listBox(const QStringList& items, const char* name) {
    auto* box = withName(new QComboBox, name);
    box->addItems(items);
    box->setMaxVisibleItems(16);
    return box;
}

} // namespace

MultiDeleteWindow::MultiDeleteWindow(AppState& state, const DateSelection& shown, QWidget* parent)
    : QDialog(parent)
    , m_state(state)
    , m_bulk(state) {
    setObjectName(QStringLiteral("frmMultiDelete"));
    setWindowTitle(tr("Porvane 90 - Delete Bookings in Bulk"));
    setModal(true);

    auto* heading =
        new QLabel(tr("Delete old bookings: a whole year, a whole month, one day, or the bookings "
                      "of a month that contain a text. Photos and IN/OUT lists are kept."));
    heading->setWordWrap(true);

    CBMDELDay = listBox(BulkDeletion::dayItems(), "CBMDELDay");
    CBMDELMonth = listBox(BulkDeletion::monthItems(), "CBMDELMonth");
    CBMDELYear = listBox(m_bulk.yearItems(), "CBMDELYear");
    CBMDELMonth->setCurrentText(shown.monthText());
    CBMDELYear->setCurrentText(shown.yearText());
    auto* dates = new QGroupBox(tr("Bookings of"));
    auto* dateGrid = new QGridLayout(dates);
    const std::array<std::pair<QString, QComboBox*>, 3> boxes{
        {{tr("&Day"), CBMDELDay}, {tr("&Month"), CBMDELMonth}, {tr("&Year"), CBMDELYear}}};
    for (int i = 0; i < 3; ++i) {
        auto* label = new QLabel(boxes[std::size_t(i)].first);
        label->setBuddy(boxes[std::size_t(i)].second);
        dateGrid->addWidget(label, 0, i);
        dateGrid->addWidget(boxes[std::size_t(i)].second, 1, i);
    }
    dateGrid->setColumnStretch(3, 1);

    m_filter = new QGroupBox(tr("Only those with a text (All Days of one month)"));
    CBDListBy = listBox(BulkDeletion::kindItems(), "CBDListBy");
    DFindTB = withName(new QLineEdit, "DFindTB");
    DFindTB->setClearButtonEnabled(true);
    m_kindCaption = withName(new QLabel, "laDListBy");
    m_textCaption = withName(new QLabel, "laDFind");
    m_kindCaption->setBuddy(CBDListBy);
    m_textCaption->setBuddy(DFindTB);
    auto* filterGrid = new QGridLayout(m_filter);
    filterGrid->addWidget(m_kindCaption, 0, 0);
    filterGrid->addWidget(CBDListBy, 0, 1);
    filterGrid->addWidget(m_textCaption, 1, 0);
    filterGrid->addWidget(DFindTB, 1, 1);
    filterGrid->setColumnStretch(1, 1);
    auto* filterNote = new QLabel(tr("Leave the text empty to delete the whole month."));
    filterNote->setStyleSheet(QStringLiteral("color: #505050;"));
    filterGrid->addWidget(filterNote, 2, 0, 1, 2);

    cmdMDELDelete = withName(new QPushButton(tr("&Delete")), "cmdMDELDelete");
    cmdMDELCancel = withName(new QPushButton(tr("Cancel")), "cmdMDELCancel");
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(cmdMDELDelete, QDialogButtonBox::DestructiveRole);
    buttons->addButton(cmdMDELCancel, QDialogButtonBox::RejectRole);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    layout->addWidget(dates);
    layout->addWidget(m_filter);
    layout->addStretch();
    layout->addWidget(buttons);
    // Enter in the boxes closes the window; deleting takes a click (or Tab to Delete).
    cmdMDELCancel->setDefault(true);
    setMinimumWidth(460);

    connect(cmdMDELDelete, &QPushButton::clicked, this, &MultiDeleteWindow::deleteSelected);
    connect(cmdMDELCancel, &QPushButton::clicked, this, &QDialog::reject);
    // Captions only: a kind picked by typing its first letter must not throw the focus past the text box.
    connect(CBDListBy, &QComboBox::currentTextChanged, this, &MultiDeleteWindow::showKind);
    connect(CBMDELDay, &QComboBox::currentTextChanged, this, &MultiDeleteWindow::showFilterState);
    connect(CBMDELMonth, &QComboBox::currentTextChanged, this, &MultiDeleteWindow::showFilterState);
    showKind(CBDListBy->currentText());
    showFilterState();
    CBMDELDay->setFocus();
}

void MultiDeleteWindow::showKind(const QString& kindText) {
    const auto kind = BulkDeletion::kindFromText(kindText);
    if (!kind)
        return;
    const BulkDeletion::Captions captions = BulkDeletion::captions(*kind);
    m_kindCaption->setText(captions.kind);
    m_textCaption->setText(captions.text);
}

void MultiDeleteWindow::showFilterState() {
    // A text narrows only a whole month; for a day or a year it would be ignored, so it cannot be typed.
    m_filter->setEnabled(CBMDELDay->currentText() == BulkDeletion::allDays() &&
                         CBMDELMonth->currentText() != BulkDeletion::allMonths());
}

void MultiDeleteWindow::deleteSelected() {
    BulkSelection selection{CBMDELDay->currentText(), CBMDELMonth->currentText(), CBMDELYear->currentText(),
                            CBDListBy->currentText(), m_filter->isEnabled() ? DFindTB->text() : QString()};
    m_outcome = m_bulk.run(selection);
    CBMDELDay->setCurrentText(selection.day);
    if (m_outcome.status == BulkDeletion::Outcome::Status::Failed)
        m_state.prompter.tell(QStringLiteral("Porvane 90"),
                              tr("Nothing was deleted: %1 (error %2).")
                                  .arg(m_outcome.error.text, QString::number(m_outcome.error.number)));
    if (m_outcome.finished())
        accept();
}

} // namespace porvane
