#include "desk/personal_details_dialog.h"

#include "app/help_topics.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace porvane {

namespace {

struct Box {
    Field field;
    const char* name;
    const char* caption;
};

constexpr Box kHomeBoxes[]{
    {Field::OurRef, "PersOurRefTB", QT_TRANSLATE_NOOP("PersonalDetailsDialog", "OUR REF.")},
    {Field::AddressLine1, "PersA1LineTB", QT_TRANSLATE_NOOP("PersonalDetailsDialog", "FIRST ADDRESS LINE")},
    {Field::Town, "PersTownTB", QT_TRANSLATE_NOOP("PersonalDetailsDialog", "TOWN")},
    {Field::County, "PersCountyTB", QT_TRANSLATE_NOOP("PersonalDetailsDialog", "COUNTY")},
    {Field::Postcode, "PersPCTB", QT_TRANSLATE_NOOP("PersonalDetailsDialog", "POST CODE")},
    {Field::HomeTel, "PersHTNTB", QT_TRANSLATE_NOOP("PersonalDetailsDialog", "HOME TELEPHONE NO.")},
    {Field::DateOfBirth, "PersDOBTB", QT_TRANSLATE_NOOP("PersonalDetailsDialog", "DATE OF BIRTH")},
};
constexpr Box kKinBoxes[]{
    {Field::KinName, "PersKinNameTB", QT_TRANSLATE_NOOP("PersonalDetailsDialog", "NAME")},
    {Field::KinHomeTel, "PersKinTelTB", QT_TRANSLATE_NOOP("PersonalDetailsDialog", "HOME TEL / MOBILE")},
    {Field::KinWorkTel, "PersKinWTelTB", QT_TRANSLATE_NOOP("PersonalDetailsDialog", "WORK TELEPHONE")},
    {Field::KinEmail, "PersKinEMATB", QT_TRANSLATE_NOOP("PersonalDetailsDialog", "E-MAIL ADDRESS")},
};

QLineEdit* shownOnly(const char* name, const QString& text) {
    auto* e = new QLineEdit(text);
    e->setObjectName(QString::fromLatin1(name));
    e->setReadOnly(true);
    e->setFocusPolicy(Qt::NoFocus);
    return e;
}

} // namespace

PersonalDetailsDialog::PersonalDetailsDialog(AppState& state, OpenBooking& booking, QWidget* parent)
    : QDialog(parent)
    , m_state(state)
    , m_details(state, booking) {
    setObjectName(QStringLiteral("frmPDetail"));
    setWindowTitle(tr("Personal details"));
    m_details.open();

    auto* who = new QHBoxLayout;
    who->addWidget(shownOnly("PersRegNoTB", m_details.regNo()));
    who->addWidget(shownOnly("PersFullNaTB", m_details.fullName()), 2);
    auto* gender = shownOnly("Genbox3TB", m_details.gender());
    gender->setMaximumWidth(30);
    who->addWidget(gender);

    auto addBoxes = [this](QFormLayout* form, const auto& boxes) {
        for (const Box& b : boxes) {
            auto* e = new QLineEdit;
            e->setObjectName(QString::fromLatin1(b.name));
            e->setMaxLength(fieldSpec(b.field).width);
            m_edits[b.field] = e;
            form->addRow(tr(b.caption), e);
            connect(e, &QLineEdit::textEdited, this,
                    [this, field = b.field](const QString& text) { m_details.setText(field, text); });
        }
    };

    auto* home = new QGroupBox(tr("Home"));
    auto* homeForm = new QFormLayout(home);
    SalCB = new QComboBox;
    SalCB->setObjectName(QStringLiteral("SalCB"));
    SalCB->setEditable(true);
    SalCB->addItems(PersonalDetails::salutationItems());
    homeForm->addRow(tr("TITLE"), SalCB);
    addBoxes(homeForm, kHomeBoxes);
    connect(SalCB, &QComboBox::currentTextChanged, this, [this](const QString& text) {
        if (!m_showing)
            m_details.setText(Field::Salutation, text);
    });

    auto* health = new QGroupBox(tr("Health"));
    auto* healthForm = new QFormLayout(health);
    PersIOPMck = new QCheckBox(tr("ILLNESS OR PHYSICAL DISABILITY"));
    PersIOPMck->setObjectName(QStringLiteral("PersIOPMck"));
    healthForm->addRow(PersIOPMck);
    auto* aids = new QLineEdit;
    aids->setObjectName(QStringLiteral("PersSWIUTB"));
    aids->setMaxLength(fieldSpec(Field::AidsUsed).width);
    m_edits[Field::AidsUsed] = aids;
    healthForm->addRow(tr("STATE WHAT IS USED"), aids);
    connect(aids, &QLineEdit::textEdited, this,
            [this](const QString& t) { m_details.setText(Field::AidsUsed, t); });
    PersIOPDTB = new QPlainTextEdit;
    PersIOPDTB->setObjectName(QStringLiteral("PersIOPDTB"));
    PersIOPDTB->setTabChangesFocus(true);
    PersIOPDTB->setFixedHeight(60);
    healthForm->addRow(tr("DETAILS"), PersIOPDTB);
    connect(PersIOPMck, &QCheckBox::toggled, this, [this](bool on) {
        if (!m_showing)
            m_details.setIllnessTicked(on);
    });
    connect(PersIOPDTB, &QPlainTextEdit::textChanged, this, [this] {
        if (!m_showing)
            m_details.setText(Field::IllnessDetails,
                              PersIOPDTB->toPlainText().replace(u'\n', QStringLiteral("\r\n")));
    });

    auto* kin = new QGroupBox(tr("Next of kin / emergency contact"));
    auto* kinForm = new QFormLayout(kin);
    addBoxes(kinForm, kKinBoxes);
    m_edits[Field::KinEmail]->installEventFilter(this);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    auto* clear = buttons->addButton(tr("C&lear"), QDialogButtonBox::ResetRole);
    clear->setObjectName(QStringLiteral("cmdPersClear"));
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdPersOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdPersCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        m_details.ok();
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &PersonalDetailsDialog::reject);
    connect(clear, &QPushButton::clicked, this, [this] {
        m_details.clear();
        showFields();
    });

    auto* columns = new QHBoxLayout;
    auto* left = new QVBoxLayout;
    left->addWidget(home);
    auto* right = new QVBoxLayout;
    right->addWidget(health);
    right->addWidget(kin);
    columns->addLayout(left);
    columns->addLayout(right);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(who);
    layout->addLayout(columns);
    layout->addWidget(buttons);
    showFields();
}

void PersonalDetailsDialog::showFields() {
    m_showing = true;
    for (auto& [field, edit] : m_edits)
        edit->setText(m_details.text(field));
    const QString salutation = m_details.text(Field::Salutation);
    SalCB->setCurrentText(salutation.isEmpty() ? PersonalDetails::initialSalutation() : salutation);
    PersIOPMck->setChecked(m_details.illnessTicked());
    PersIOPDTB->setPlainText(
        QString(m_details.text(Field::IllnessDetails)).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
    m_showing = false;
}

bool PersonalDetailsDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut && watched == m_edits[Field::KinEmail]) {
        m_details.leaveKinEmail();
        m_edits[Field::KinEmail]->setText(m_details.text(Field::KinEmail));
    }
    return QDialog::eventFilter(watched, event);
}

void PersonalDetailsDialog::keyPressEvent(QKeyEvent* event) {
    if (!m_state.help.openOnKey(*event))
        QDialog::keyPressEvent(event);
}

void PersonalDetailsDialog::reject() {
    m_details.cancel();
    QDialog::reject();
}

} // namespace porvane
