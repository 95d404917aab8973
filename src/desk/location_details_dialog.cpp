#include "desk/location_details_dialog.h"

#include "app/help_topics.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
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

constexpr Box kBoxes[]{
    {Field::OurRef, "LocOurRefTB", QT_TRANSLATE_NOOP("LocationDetailsDialog", "OUR REF.")},
    {Field::Visiting, "LocVisitingTB", QT_TRANSLATE_NOOP("LocationDetailsDialog", "VISITING / REPORTING TO")},
    {Field::VisitingTel, "LocTelTB", QT_TRANSLATE_NOOP("LocationDetailsDialog", "TELEPHONE  (or Ext.)")},
    {Field::VisitingPager, "LocPagTB", QT_TRANSLATE_NOOP("LocationDetailsDialog", "PAGER")},
    {Field::Location, "LocLocTB", QT_TRANSLATE_NOOP("LocationDetailsDialog", "LOCATION / BUILDING NO.")},
};

QComboBox* pickList(const char* name, const QStringList& items) {
    auto* c = new QComboBox;
    c->setObjectName(QString::fromLatin1(name));
    c->setEditable(true);
    c->setInsertPolicy(QComboBox::NoInsert);
    c->addItem(LocationDetails::nothingSelected());
    c->addItems(items);
    return c;
}

} // namespace

LocationDetailsDialog::LocationDetailsDialog(AppState& state, OpenBooking& booking,
                                             const QStringList& workDescriptions,
                                             const QStringList& accessAreas, QWidget* parent)
    : QDialog(parent)
    , m_state(state)
    , m_details(state, booking) {
    setObjectName(QStringLiteral("frmDetail"));
    setWindowTitle(tr("Location and work details"));
    m_details.open(workDescriptions, accessAreas);

    auto* form = new QFormLayout;
    LocDepTb = new QLineEdit(m_details.department());
    LocDepTb->setObjectName(QStringLiteral("LocDepTb"));
    LocDepTb->setReadOnly(true);
    LocDepTb->setFocusPolicy(Qt::NoFocus);
    form->addRow(tr("DEPARTMENT"), LocDepTb);
    for (const Box& b : kBoxes) {
        auto* e = new QLineEdit;
        e->setObjectName(QString::fromLatin1(b.name));
        e->setMaxLength(fieldSpec(b.field).width);
        m_edits[b.field] = e;
        form->addRow(tr(b.caption), e);
        connect(e, &QLineEdit::textEdited, this,
                [this, field = b.field](const QString& text) { m_details.setText(field, text); });
    }
    DescOWCB = pickList("DescOWCB", m_details.workDescriptionItems());
    SelectACB = pickList("SelectACB", m_details.accessAreaItems());
    form->addRow(tr("DESCRIPTION OF WORK"), DescOWCB);
    form->addRow(tr("SELECT ACCESS AREA(S)"), SelectACB);
    connect(DescOWCB, &QComboBox::currentTextChanged, this, [this](const QString& t) {
        if (!m_showing)
            m_details.setText(Field::WorkDescription, t);
    });
    connect(SelectACB, &QComboBox::currentTextChanged, this, [this](const QString& t) {
        if (!m_showing)
            m_details.setText(Field::AccessAreas, t);
    });

    LocInfoTB = new QPlainTextEdit;
    LocInfoTB->setObjectName(QStringLiteral("LocInfoTB"));
    LocRestrTB = new QPlainTextEdit;
    LocRestrTB->setObjectName(QStringLiteral("LocRestrTB"));
    for (QPlainTextEdit* t : {LocInfoTB, LocRestrTB}) {
        t->setTabChangesFocus(true);
        t->setFixedHeight(54);
        t->viewport()->installEventFilter(this);
    }
    form->addRow(tr("Additional Information"), LocInfoTB);
    form->addRow(tr("Restrictions"), LocRestrTB);
    connect(LocInfoTB, &QPlainTextEdit::textChanged, this, [this] {
        if (!m_showing)
            m_details.setAdditionalInfo(LocInfoTB->toPlainText());
    });
    connect(LocRestrTB, &QPlainTextEdit::textChanged, this, [this] {
        if (!m_showing)
            m_details.setRestrictions(LocRestrTB->toPlainText());
    });

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    auto* clear = buttons->addButton(tr("C&lear"), QDialogButtonBox::ResetRole);
    clear->setObjectName(QStringLiteral("cmdLocClear"));
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdLocOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdLocCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        m_details.ok();
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &LocationDetailsDialog::reject);
    connect(clear, &QPushButton::clicked, this, [this] {
        m_details.clear();
        showFields();
    });

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
    setMinimumWidth(520);
    showFields();
}

void LocationDetailsDialog::showFields() {
    m_showing = true;
    for (auto& [field, edit] : m_edits)
        edit->setText(m_details.text(field));
    const auto showPick = [](QComboBox* box, const QString& value) {
        box->setCurrentText(value.isEmpty() ? LocationDetails::nothingSelected() : value);
    };
    showPick(DescOWCB, m_details.text(Field::WorkDescription));
    showPick(SelectACB, m_details.text(Field::AccessAreas));
    LocInfoTB->setPlainText(m_details.additionalInfo());
    LocRestrTB->setPlainText(m_details.restrictions());
    m_showing = false;
}

bool LocationDetailsDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonDblClick) {
        if (watched == LocInfoTB->viewport())
            m_details.additionalInfoAction();
        else if (watched == LocRestrTB->viewport())
            m_details.restrictionsAction();
    }
    return QDialog::eventFilter(watched, event);
}

void LocationDetailsDialog::keyPressEvent(QKeyEvent* event) {
    if (!m_state.help.openOnKey(*event))
        QDialog::keyPressEvent(event);
}

void LocationDetailsDialog::reject() {
    m_details.cancel();
    QDialog::reject();
}

} // namespace porvane
