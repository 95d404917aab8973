#include "passes/pass_window.h"

#include "app/help_topics.h"
#include "app/print_dialog.h"

#include <QCalendarWidget>
#include <QComboBox>
#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

namespace porvane {

namespace {

QLabel* namedLabel(const char* name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    return label;
}

QPushButton* namedButton(const char* name, const QString& text, QWidget* parent) {
    auto* button = new QPushButton(text, parent);
    button->setObjectName(QString::fromLatin1(name));
    return button;
}

void showImage(QLabel* label, const QString& file, const QSize& box) {
    const QPixmap pixmap(file);
    if (pixmap.isNull()) {
        label->setPixmap(QPixmap());
        label->setStyleSheet(QStringLiteral("background: #e6e6e6; border: 1px solid #a0a0a0;"));
    } else {
        label->setStyleSheet(QString());
        label->setPixmap(pixmap.scaled(box, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    }
}

} // namespace

PassWindow::PassWindow(AppState& state, Hooks hooks, QWidget* parent)
    : QDialog(parent)
    , m_state(state)
    , m_hooks(std::move(hooks))
    , m_pass(state) {
    setObjectName(QStringLiteral("frmPass"));
    setWindowTitle(tr("Visitor Pass"));
    setModal(true);

    // Choice of length and start.
    auto* dates = new QFrame(this);
    dates->setObjectName(QStringLiteral("Fraim5"));
    dates->setFrameShape(QFrame::StyledPanel);
    m_number = new QComboBox(dates);
    m_number->setObjectName(QStringLiteral("PassNumberCB"));
    m_number->addItems({QStringLiteral("ONE"), QStringLiteral("TWO"), QStringLiteral("THREE"),
                        QStringLiteral("FOUR"), QStringLiteral("FIVE"), QStringLiteral("SIX")});
    m_period = new QComboBox(dates);
    m_period->setObjectName(QStringLiteral("PassPeriodCB"));
    m_period->addItems({QStringLiteral("Day"), QStringLiteral("Week"), QStringLiteral("Month")});
    m_today = new QLineEdit(dates);
    m_today->setObjectName(QStringLiteral("PassTodayTB"));
    m_today->setReadOnly(true);
    auto* cal = namedButton("cmdCal", tr("Start Date..."), dates);
    m_dayNotice = namedLabel("laDayNotice", dates);
    m_dayNotice->setStyleSheet(QStringLiteral("color: #122f6b; font-weight: bold;"));
    auto* datesLayout = new QGridLayout(dates);
    datesLayout->addWidget(new QLabel(tr("Valid for"), dates), 0, 0);
    datesLayout->addWidget(m_number, 0, 1);
    datesLayout->addWidget(m_period, 0, 2);
    datesLayout->addWidget(new QLabel(tr("Starting"), dates), 1, 0);
    datesLayout->addWidget(m_today, 1, 1);
    datesLayout->addWidget(cal, 1, 2);
    datesLayout->addWidget(m_dayNotice, 2, 0, 1, 3);

    m_calPanel = new QFrame(this);
    m_calPanel->setObjectName(QStringLiteral("PicCal2"));
    m_calendar = new QCalendarWidget(m_calPanel);
    m_calendar->setObjectName(QStringLiteral("Calendar2"));
    auto* calDecr = namedButton("cmdCalDECR", QStringLiteral("<<"), m_calPanel);
    auto* calIncr = namedButton("cmdCalINCR", QStringLiteral(">>"), m_calPanel);
    auto* calLayout = new QGridLayout(m_calPanel);
    calLayout->addWidget(m_calendar, 0, 0, 1, 2);
    calLayout->addWidget(calDecr, 1, 0);
    calLayout->addWidget(calIncr, 1, 1);

    // The preview, laid out like the printed card.
    auto* preview = new QFrame(this);
    preview->setObjectName(QStringLiteral("PassPreview"));
    preview->setFrameShape(QFrame::Box);
    preview->setStyleSheet(QStringLiteral("#PassPreview { background: white; } QLabel { color: #101010; }"));
    m_firm = namedLabel("FirmNameTB", preview);
    m_firm->setStyleSheet(QStringLiteral("color: #122f6b; font-size: 16pt; font-weight: bold;"));
    m_logo = namedLabel("LogoImage", preview);
    m_photo = namedLabel("PassPortIma", preview);
    m_photo->setFixedSize(120, 160);
    m_photo->setAlignment(Qt::AlignCenter);
    m_name = namedLabel("PassNameTB", preview);
    m_name->setStyleSheet(QStringLiteral("font-size: 18pt; font-weight: bold;"));
    m_organ = namedLabel("PassOrganTB", preview);
    m_dept = namedLabel("PassDeptTB", preview);
    m_regOp = namedLabel("PassRegOPTB", preview);
    m_valid = namedLabel("PASSValidTB", preview);
    m_valid->setStyleSheet(QStringLiteral("color: #122f6b; font-weight: bold;"));
    m_date = namedLabel("PassDateTB", preview);
    m_time = namedLabel("PassTimeTB", preview);
    m_regNo = namedLabel("PassRegNoTB", preview);
    m_regNo->hide(); // the bar code's value; the bar code itself is drawn when printing
    m_barText = namedLabel("laBC", preview);
    m_barText->setAlignment(Qt::AlignCenter);
    auto* head = new QHBoxLayout;
    head->addWidget(m_logo);
    head->addWidget(m_firm, 1);
    auto* text = new QVBoxLayout;
    for (QLabel* l : {m_name, m_organ, m_dept, m_regOp, m_valid, m_date, m_time})
        text->addWidget(l);
    text->addStretch();
    auto* body = new QHBoxLayout;
    body->addWidget(m_photo);
    body->addLayout(text, 1);
    auto* previewLayout = new QVBoxLayout(preview);
    previewLayout->addLayout(head);
    previewLayout->addLayout(body);
    previewLayout->addWidget(m_barText);
    previewLayout->addWidget(m_regNo);

    m_printing = namedLabel("laPrinting", this);
    m_printing->setText(tr("Printing pass..."));
    m_printing->hide();

    m_print = namedButton("cmdPrintPass", tr("&Print Pass"), this);
    auto* capture = namedButton("cmdCapture", tr("&Camera"), this);
    auto* getPhoto = namedButton("cmdGetPhoto", tr("P&hotos"), this);
    m_remove = namedButton("cmdRemovePass", tr("&Remove Pass"), this);
    auto* closeButton = namedButton("cmdClosePass", tr("&Close"), this);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : {m_print, capture, getPhoto, m_remove, closeButton})
        buttons->addWidget(b);

    auto* left = new QVBoxLayout;
    left->addWidget(dates);
    left->addWidget(m_calPanel);
    left->addStretch();
    auto* top = new QHBoxLayout;
    top->addLayout(left);
    top->addWidget(preview, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_printing);
    layout->addLayout(buttons);

    m_calendar->setSelectedDate(m_state.clock.today());
    m_pass.open();
    m_state.help.setTopic(HelpTopic::Pass);
    refresh();

    connect(m_number, &QComboBox::textActivated, this, [this](const QString& t) {
        m_pass.choosePassNumber(t);
        refresh();
    });
    connect(m_period, &QComboBox::textActivated, this, [this](const QString& t) {
        m_pass.choosePassPeriod(t);
        refresh();
    });
    connect(cal, &QPushButton::clicked, this, [this] {
        m_pass.toggleCalendar();
        refresh();
    });
    connect(m_calendar, &QCalendarWidget::clicked, this, [this](QDate day) {
        m_pass.pickCalendarDay(day);
        refresh();
    });
    connect(calDecr, &QPushButton::clicked, this, [this] { stepCalendar(-1); });
    connect(calIncr, &QPushButton::clicked, this, [this] { stepCalendar(1); });
    connect(m_print, &QPushButton::clicked, this, &PassWindow::printPass);
    connect(capture, &QPushButton::clicked, this, [this] {
        if (m_hooks.openCamera)
            m_hooks.openCamera(this);
        m_pass.reloadPhoto();
        refresh();
    });
    connect(getPhoto, &QPushButton::clicked, this, [this] {
        if (m_hooks.openPhotos)
            m_hooks.openPhotos(this);
        m_pass.reloadPhoto();
        refresh();
    });
    connect(m_remove, &QPushButton::clicked, this, [this] {
        m_pass.requestRemoval();
        close();
    });
    connect(closeButton, &QPushButton::clicked, this, &QDialog::close);
}

void PassWindow::stepCalendar(int months) {
    const QDate shown(m_calendar->yearShown(), m_calendar->monthShown(), 1);
    const QDate next = shown.addMonths(months);
    m_calendar->setCurrentPage(next.year(), next.month());
}

void PassWindow::refresh() {
    const PassIssue::View& v = m_pass.view();
    m_number->setCurrentText(v.PassNumberCB);
    m_period->setCurrentText(v.PassPeriodCB);
    m_today->setText(v.PassTodayTB);
    m_calPanel->setVisible(v.calendarShown);
    m_dayNotice->setText(v.laDayNotice);
    m_valid->setText(v.PASSValidTB);
    m_firm->setText(v.FirmNameTB);
    m_name->setText(v.PassNameTB);
    m_organ->setText(v.PassOrganTB);
    m_dept->setText(v.PassDeptTB);
    m_regOp->setText(v.PassRegOPTB);
    m_regNo->setText(v.PassRegNoTB);
    m_date->setText(v.PassDateTB);
    m_time->setText(v.PassTimeTB);
    m_barText->setText(v.laBC);
    m_barText->setVisible(v.laBCVisible);
    showImage(m_photo, v.PassPortIma, m_photo->size());
    m_logo->setVisible(!v.LogoImage.isEmpty());
    if (!v.LogoImage.isEmpty())
        showImage(m_logo, v.LogoImage, QSize(64, 44));
    m_print->setEnabled(v.printEnabled);
    m_remove->setEnabled(v.removeEnabled);
}

void PassWindow::printPass() {
    if (!m_print->isEnabled())
        return;
    m_printing->show();
    const PassIssue::StoreRecord store =
        m_hooks.storeRecord ? m_hooks.storeRecord : updateBookingInStore(m_state);
    QString error;
    const PassIssue::Render render = m_hooks.render ? m_hooks.render : [this](const PassContent& c) {
        return PrintDialog::print(m_state.prompter, this,
                                  {tr("Visitor pass %1").arg(c.regNo),
                                   tr("Pass %1.pdf").arg(c.regNo.trimmed()), tr("the pass"), false,
                                   [&c](QPagedPaintDevice& device) {
                                       return PassLayout::print(device, c);
                                   }});
    };
    const PassIssue::PrintResult result = m_pass.print(render, store, &error);
    if (result == PassIssue::PrintResult::NotPrinted)
        m_state.prompter.tell(QStringLiteral("Porvane 90"), tr("The pass was not printed: %1").arg(error));
    else if (result == PassIssue::PrintResult::NotStored && !error.isEmpty())
        m_state.prompter.tell(QStringLiteral("Porvane 90"), error);
    m_printing->hide();
    refresh();
}

void PassWindow::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        m_state.help.setTopic(HelpTopic::Pass);
        m_pass.reloadPhoto();
        refresh();
    }
}

void PassWindow::keyPressEvent(QKeyEvent* event) {
    if (!m_state.help.openOnKey(*event, HelpTopic::Pass))
        QDialog::keyPressEvent(event);
}

void PassWindow::done(int result) {
    if (!m_pass.confirmClose())
        return;
    QDialog::done(result);
}

} // namespace porvane
