#include "photos/photo_manager_window.h"

#include "app/help_topics.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPixmap>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace porvane {

namespace {

template <typename W> W* named(W* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

// The months offered: the year before today up to six months ahead, as "yymm" with a readable label.
QList<QDate> offeredMonths(const QDate& today) {
    QList<QDate> months;
    const QDate first(today.year(), today.month(), 1);
    for (int k = 6; k >= -18; --k)
        months << first.addMonths(k);
    return months;
}

} // namespace

PhotoManagerWindow::PhotoManagerWindow(AppState& state, QWidget* parent)
    : QDialog(parent)
    , m_state(state)
    , m_photos(state)
    , m_model(this) {
    setObjectName(QStringLiteral("frmHandlePhoto"));
    setWindowTitle(m_photos.caption());
    setModal(true);

    m_month = named(new QComboBox(this), "CBHPMonth");
    m_month->addItem(tr("All Months"));
    const QLocale english(QLocale::English);
    for (const QDate& m : offeredMonths(m_state.clock.today()))
        m_month->addItem(english.toString(m, QStringLiteral("MMM yyyy")), m.toString(QStringLiteral("yyMM")));
    // The current booking's month first, else this month.
    const int own = m_month->findData(m_state.record[Field::RegNo].left(4));
    m_month->setCurrentIndex(
        own > 0 ? own : m_month->findData(m_state.clock.today().toString(QStringLiteral("yyMM"))));
    m_day = named(new QComboBox(this), "CBHPDay");
    m_day->addItem(tr("All Days"));
    for (int d = 1; d <= 31; ++d)
        m_day->addItem(QString::number(d));
    auto* list = named(new QPushButton(tr("&List"), this), "cmdHPList");
    m_find = named(new QLineEdit(this), "HPFindTB");
    m_find->setPlaceholderText(tr("Name or organisation"));
    auto* find = named(new QPushButton(tr("&Find"), this), "cmdHPFind");

    m_grid = named(new QTableView(this), "PhotoGrid");
    m_grid->setModel(&m_model);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->horizontalHeader()->setStretchLastSection(true);
    m_grid->horizontalHeader()->setStyleSheet(
        QStringLiteral("QHeaderView::section { background: #ffffff; }"));
    m_grid->verticalHeader()->hide();

    m_image = named(new QLabel(this), "HPImage");
    m_image->setFixedSize(150, 200);
    m_image->setAlignment(Qt::AlignCenter);
    m_image->setStyleSheet(QStringLiteral("background: #e6e6e6;"));
    m_regNo = named(new QLabel(this), "LaHPRegno");
    m_name = named(new QLabel(this), "LAHPName");
    m_org = named(new QLabel(this), "LaHPOrg");
    m_passIssued = named(new QLabel(this), "LaHPPassI");
    m_status = named(new QLabel(this), "laHPStatus");

    auto* attach = named(new QPushButton(tr("&Attach to Current"), this), "cmdHPAttach");
    auto* remove = named(new QPushButton(tr("&Delete Photo"), this), "cmdHPDelete");
    auto* removeAll = named(new QPushButton(tr("Delete &All Listed"), this), "cmdHPDeleteList");
    auto* closeButton = named(new QPushButton(tr("&Close"), this), "cmdHPClose");
    attach->setEnabled(m_photos.changesAllowed() && !m_state.record[Field::RegNo].trimmed().isEmpty());
    remove->setEnabled(m_photos.changesAllowed());
    removeAll->setEnabled(m_photos.changesAllowed());

    auto* choose = new QHBoxLayout;
    choose->addWidget(m_month);
    choose->addWidget(m_day);
    choose->addWidget(list);
    choose->addSpacing(16);
    choose->addWidget(m_find, 1);
    choose->addWidget(find);
    auto* details = new QVBoxLayout;
    details->addWidget(m_image);
    for (QLabel* l : {m_regNo, m_name, m_org, m_passIssued})
        details->addWidget(l);
    details->addStretch();
    auto* middle = new QHBoxLayout;
    middle->addWidget(m_grid, 1);
    middle->addLayout(details);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_status, 1);
    for (QPushButton* b : {attach, remove, removeAll, closeButton})
        buttons->addWidget(b);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(choose);
    layout->addLayout(middle, 1);
    layout->addLayout(buttons);
    resize(900, 520);

    connect(list, &QPushButton::clicked, this,
            [this] { showRows(m_photos.list(chosenMonths(), m_day->currentIndex())); });
    connect(find, &QPushButton::clicked, this,
            [this] { showRows(m_photos.find(chosenMonths(), m_find->text())); });
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &PhotoManagerWindow::showSelected);
    connect(attach, &QPushButton::clicked, this, [this] {
        if (const PhotoRow* row = selected(); row && m_photos.attach(*row))
            m_status->setText(tr("Photo Attached"));
    });
    connect(remove, &QPushButton::clicked, this, [this] {
        const PhotoRow* row = selected();
        if (!row)
            return;
        const QString regNo = row->regNo;
        const QString status = m_photos.deleteOne(*row);
        if (status.isEmpty())
            return;
        m_image->hide();
        m_image->setPixmap(QPixmap(m_photos.placeholderImage()));
        m_state.pause.wait(0.08);
        m_model.removeRegNo(regNo);
        m_image->show();
        m_status->setText(status);
    });
    connect(removeAll, &QPushButton::clicked, this, [this] {
        const QString status = m_photos.deleteListed(m_model.rows());
        if (status.isEmpty())
            return;
        m_status->setText(status);
        showRows(m_photos.list(chosenMonths(), m_day->currentIndex()));
    });
    connect(closeButton, &QPushButton::clicked, this, &QDialog::accept);
}

void PhotoManagerWindow::keyPressEvent(QKeyEvent* event) {
    if (!m_state.help.openOnKey(*event, HelpTopic::Photos))
        QDialog::keyPressEvent(event);
}

QStringList PhotoManagerWindow::chosenMonths() const {
    QStringList months;
    if (m_month->currentIndex() > 0) {
        months << m_month->currentData().toString();
    } else {
        for (int i = 1; i < m_month->count(); ++i)
            months << m_month->itemData(i).toString();
    }
    return months;
}

void PhotoManagerWindow::showRows(QList<PhotoRow> rows) {
    clearSelected();
    m_status->setText(PhotoManager::countLine(rows.size()));
    m_model.setRows(std::move(rows));
    m_grid->resizeColumnsToContents();
}

const PhotoRow* PhotoManagerWindow::selected() const {
    const QModelIndex current = m_grid->currentIndex();
    if (!current.isValid() || current.row() >= m_model.rows().size())
        return nullptr;
    return &m_model.rows().at(current.row());
}

void PhotoManagerWindow::clearSelected() {
    for (QLabel* l : {m_regNo, m_name, m_org, m_passIssued})
        l->clear();
    m_image->setPixmap(QPixmap());
}

void PhotoManagerWindow::showSelected() {
    const PhotoRow* row = selected();
    if (!row) {
        clearSelected();
        return;
    }
    m_regNo->setText(row->regNo);
    m_name->setText(row->name);
    m_org->setText(row->organisation);
    m_passIssued->setText(row->passIssued.isEmpty() ? tr("No Pass") : row->passIssued);
    const PhotoRow shown = *row; // the prompter may run events that reset the list
    m_image->setPixmap(
        QPixmap(m_photos.show(shown)).scaled(m_image->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

} // namespace porvane
