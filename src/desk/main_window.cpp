#include "desk/main_window.h"

#include "app/about_window.h"
#include "app/help_topics.h"
#include "app/print_dialog.h"
#include "demo/demo_offer.h"
#include "desk/booked_times_model.h"
#include "desk/end_of_day.h"
#include "desk/gate_scan.h"
#include "desk/list_sort_filter_model.h"
#include "desk/location_details_dialog.h"
#include "desk/personal_details_dialog.h"
#include "desk/store_choice.h"
#include "lists/list_export.h"
#include "lists/list_printing.h"
#include "lists/list_table_model.h"
#include "lists/multi_delete_window.h"
#include "lists/record_search.h"
#include "lists/roll_call_sheet.h"
#include "passes/pass_window.h"
#include "photos/camera_window.h"
#include "photos/photo_manager_window.h"
#include "settings/settings_window.h"
#include "store/data_paths.h"
#include "store/pick_lists.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QShortcut>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>
#include <QValidator>

namespace porvane {

namespace {

template <typename W> W* named(W* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

QPushButton* button(const QString& text, const char* name, const QString& tip = {}) {
    auto* b = named(new QPushButton(text), name);
    if (!tip.isEmpty())
        b->setToolTip(tip);
    return b;
}

void setStyleOnce(QWidget* widget, const QString& style) {
    // Styling is costly and the editor's labels are shown again on every key typed.
    if (widget->styleSheet() != style)
        widget->setStyleSheet(style);
}

// A month picker: its arrows step whole months, across the turn of the year, and a year at a time in the
// year's digits.
class MonthEdit final : public QDateEdit {
public:
    MonthEdit(const QDate& month, const QDate& first, const QDate& last) {
        setDisplayFormat(QStringLiteral("MMM yyyy"));
        setDateRange(first, last);
        setDate(month);
        setCurrentSection(MonthSection);
    }
    void stepBy(int steps) override {
        setDate(date().addMonths(currentSection() == YearSection ? 12 * steps : steps));
        setSelectedSection(currentSection());
    }

protected:
    StepEnabled stepEnabled() const override {
        StepEnabled enabled = StepNone;
        if (date() > minimumDate())
            enabled |= StepDownEnabled;
        if (date() < maximumDate())
            enabled |= StepUpEnabled;
        return enabled;
    }
};

void setLabel(QLabel* label, const BookingEditor::Label& state) {
    label->setText(state.text);
    QString style;
    if (state.background.isValid())
        style += QStringLiteral("background-color: %1;").arg(state.background.name());
    if (state.foreground.isValid())
        style += QStringLiteral("color: %1;").arg(state.foreground.name());
    setStyleOnce(label, style + QStringLiteral("border: 1px solid #a0a0a0; padding: 1px 4px;"));
    label->setFixedHeight(24);
}

} // namespace

MainWindow::MainWindow(AppState& state, BookingStore& store, QWidget* parent)
    : QMainWindow(parent)
    , m_state(state)
    , m_dates(state.clock.today().year())
    , m_booking(state.record)
    , m_times(state, m_booking)
    , m_editor(state, m_booking, m_dates, m_times, store)
    , m_lists(state) {
    setObjectName(QStringLiteral("frmMain"));

    auto* central = new QWidget;
    auto* top = new QHBoxLayout;
    top->addWidget(buildEditor(), 1);
    top->addWidget(buildTimes());
    top->addWidget(buildDates());

    StatGrid = named(new QTableView, "StatGrid");
    StatGrid->setSelectionBehavior(QAbstractItemView::SelectRows);
    StatGrid->setSelectionMode(QAbstractItemView::SingleSelection);
    StatGrid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    StatGrid->verticalHeader()->setDefaultSectionSize(20);
    StatGrid->verticalHeader()->hide();
    StatGrid->setMinimumHeight(180);
    StatGrid->setAlternatingRowColors(false);
    StatGrid->horizontalHeader()->setHighlightSections(false);
    // Tab moves on to the next control; the arrow keys walk the rows.
    StatGrid->setTabKeyNavigation(false);
    m_listModel = new ListTableModel(this);
    m_listView = new ListSortFilterModel(m_listModel, this);
    StatGrid->setModel(m_listView);

    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(6, 4, 6, 4);
    layout->setSpacing(4);
    layout->addLayout(top);
    layout->addWidget(buildActions());
    layout->addWidget(buildGate());
    layout->addWidget(StatGrid, 1);
    setCentralWidget(central);

    wireEditor();
    wireTimes();
    wireDates();
    wireLists();
    wireTools();
    wireGate();
    fillPickLists();

    m_dates.changed = [this] {
        showDateState();
    };
    m_dates.cmdGetToday(m_state.clock);
    showBooking();
    showEditorState();
    if (m_state.settings.ckShowToday == u"1")
        listDay();
    showTitle();
    resize(1016, 720);
}

MainWindow::~MainWindow() = default;

QWidget* MainWindow::buildEditor() {
    auto* box = new QGroupBox(tr("Booking"));
    auto* grid = new QGridLayout(box);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(3);

    auto line = [this](Field field) {
        auto* edit = new QLineEdit;
        edit->setObjectName(BookingEditor::controlName(field));
        edit->setMaxLength(fieldSpec(field).width);
        edit->setMinimumWidth(60);
        m_boxes[std::size_t(field)] = edit;
        return edit;
    };
    auto combo = [this](Field field) {
        auto* c = new QComboBox;
        c->setObjectName(BookingEditor::controlName(field));
        c->setEditable(true);
        c->setInsertPolicy(QComboBox::NoInsert);
        c->setMinimumWidth(60);
        c->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        m_boxes[std::size_t(field)] = c;
        return c;
    };
    auto add = [grid](int row, int col, const QString& caption, QWidget* w, int span = 1) {
        auto* l = new QLabel(caption);
        l->setBuddy(w);
        grid->addWidget(l, row, col * 3, Qt::AlignRight);
        grid->addWidget(w, row, col * 3 + 1, 1, span);
    };

    RegNoTB = line(Field::RegNo);
    RegNoTB->setReadOnly(true);
    RegNoTB->setFocusPolicy(Qt::NoFocus);
    FirstNameTB = line(Field::FirstName);
    LastNameTB = line(Field::LastName);
    PersGendTB = line(Field::Gender);
    PersGendTB->setReadOnly(true);
    PersGendTB->setMinimumWidth(28);
    PersGendTB->setMaximumWidth(28);
    PersGendTB->setAlignment(Qt::AlignCenter);
    PersGendTB->setToolTip(tr("Click to switch between M and F"));
    PersEmailTB = line(Field::Email);
    CatEMATB = line(Field::OrgEmail);
    CataCB = combo(Field::Category);
    Dept1CB = combo(Field::Department);

    // The month a new booking goes into is always in sight, beside the registration number.
    laBookMonth = named(new QLabel, "laBookMonth");
    laBookMonth->setToolTip(
        tr("The month this booking belongs to; NEW books into the month of the date boxes"));
    RegNoTB->setMinimumWidth(RegNoTB->fontMetrics().horizontalAdvance(QStringLiteral("000000000000")) + 14);
    auto* regNoRow = new QHBoxLayout;
    regNoRow->setSpacing(4);
    regNoRow->addWidget(RegNoTB, 1);
    regNoRow->addWidget(laBookMonth);
    auto* regNoBox = new QWidget;
    regNoBox->setLayout(regNoRow);
    regNoRow->setContentsMargins(0, 0, 0, 0);

    // Left: the visitor; right: the organisation.
    add(0, 0, tr("Registration"), regNoBox);
    add(1, 0, tr("&First name"), FirstNameTB);
    add(2, 0, tr("&Last name"), LastNameTB);
    add(3, 0, tr("M/F"), PersGendTB);
    add(4, 0, tr("Mobile"), line(Field::MobileTel));
    add(5, 0, tr("Car reg."), line(Field::CarReg));
    add(6, 0, tr("E-mail"), PersEmailTB);

    add(0, 1, tr("&Category"), CataCB);
    add(1, 1, tr("&Department"), Dept1CB);
    add(2, 1, tr("&Organisation"), line(Field::Organisation));
    add(3, 1, tr("Party of"), line(Field::PartySize));
    add(4, 1, tr("Address"), line(Field::OrgAddress));
    add(5, 1, tr("Tel. DDI"), line(Field::OrgDirectTel));
    add(6, 1, tr("Post code"), line(Field::OrgPostcode));
    add(7, 1, tr("Alt. tel."), line(Field::OrgAltTel));
    add(8, 1, tr("Org. e-mail"), CatEMATB);
    qobject_cast<QLineEdit*>(m_boxes[std::size_t(Field::PartySize)])->setMaximumWidth(48);
    qobject_cast<QLineEdit*>(m_boxes[std::size_t(Field::OrgPostcode)])->setMaximumWidth(110);
    grid->setColumnStretch(1, 2);
    grid->setColumnStretch(4, 3);
    grid->setColumnMinimumWidth(2, 8);

    cmdPersonal = button(tr("Personal details..."), "cmdPersDetail");
    cmdLocation = button(tr("Location && work..."), "cmdLocDetail");
    grid->addWidget(cmdPersonal, 7, 1);
    grid->addWidget(cmdLocation, 8, 1);

    PassPrntdLa = named(new QLabel, "PassPrntdLa");
    PhotoOnFLa = named(new QLabel, "PhotoOnFLa");
    LaON_Site = named(new QLabel, "LaON_Site");
    LaOFFSite = named(new QLabel, "LaOFFSite");
    LaON_Site->setToolTip(tr("Arrived today"));
    LaOFFSite->setToolTip(tr("Departed today"));
    // Wide enough for a time, so that marking IN or OUT does not shift the labels beside them.
    for (QLabel* l : {LaON_Site, LaOFFSite}) {
        l->setAlignment(Qt::AlignCenter);
        l->setFixedWidth(l->fontMetrics().horizontalAdvance(QStringLiteral("00:00")) + 16);
    }
    auto* labels = new QHBoxLayout;
    labels->addWidget(new QLabel(tr("Pass:")));
    labels->addWidget(PassPrntdLa, 2);
    labels->addWidget(PhotoOnFLa, 1);
    labels->addSpacing(6);
    labels->addWidget(new QLabel(tr("In:")));
    labels->addWidget(LaON_Site);
    labels->addSpacing(6);
    labels->addWidget(new QLabel(tr("Out:")));
    labels->addWidget(LaOFFSite);
    grid->addLayout(labels, 9, 0, 1, 6);

    setTabOrder(FirstNameTB, LastNameTB);
    return box;
}

QWidget* MainWindow::buildTimes() {
    auto* box = new QGroupBox(tr("Booked times"));
    auto* v = new QVBoxLayout(box);
    v->setSpacing(3);
    TimeGrid = named(new QTableView, "TimeGrid");
    m_timesModel = new BookedTimesModel(m_times, this);
    TimeGrid->setModel(m_timesModel);
    TimeGrid->setTabKeyNavigation(false);
    TimeGrid->verticalHeader()->hide();
    TimeGrid->verticalHeader()->setDefaultSectionSize(19);
    // The two columns always fit the grid's width, so it never scrolls sideways.
    TimeGrid->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Fixed);
    TimeGrid->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    TimeGrid->setColumnWidth(0, 56);
    TimeGrid->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    TimeGrid->setSelectionMode(QAbstractItemView::SingleSelection);
    TimeGrid->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                              QAbstractItemView::AnyKeyPressed);
    TimeGrid->setFixedWidth(142);
    v->addWidget(TimeGrid, 1);

    auto* pick = new QHBoxLayout;
    laSelTime = named(new QLabel(tr("Time")), "laSelTime");
    cbTime = named(new QComboBox, "cbTime");
    cbTime->addItems(BookedTimes::timeListItems());
    cbTime->setCurrentIndex(-1);
    pick->addWidget(laSelTime);
    pick->addWidget(cbTime, 1);
    v->addLayout(pick);
    cmdADD = button(tr("ADD"), "cmdADD", tr("Book the chosen time on the selected day (+ or Ctrl+T)"));
    cmdSUB = button(tr("SUB"), "cmdSUB", tr("Remove the selected day's time (-)"));
    cmdCLEARAll = button(tr("CLEAR All"), "cmdCLEARAll", tr("Remove every booked time of this month"));
    auto* row = new QHBoxLayout;
    row->addWidget(cmdADD);
    row->addWidget(cmdSUB);
    v->addLayout(row);
    v->addWidget(cmdCLEARAll);
    box->setFixedWidth(160);
    return box;
}

QWidget* MainWindow::buildDates() {
    auto* box = new QGroupBox(tr("Date"));
    auto* v = new QVBoxLayout(box);
    v->setSpacing(3);
    CBGetDay = named(new QComboBox, "CBGetDay");
    CBGetMonth = named(new QComboBox, "CBGetMonth");
    CBGetYear = named(new QComboBox, "CBGetYear");
    CBGetDay->addItems(DateSelection::dayItems());
    CBGetMonth->addItems(DateSelection::monthItems());
    CBGetYear->addItems(m_dates.yearItems());
    auto* boxes = new QHBoxLayout;
    boxes->addWidget(CBGetDay);
    boxes->addWidget(CBGetMonth, 1);
    boxes->addWidget(CBGetYear);
    v->addLayout(boxes);

    Calendar1 = named(new QCalendarWidget, "Calendar1");
    Calendar1->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    Calendar1->setNavigationBarVisible(false);
    Calendar1->setGridVisible(true);
    Calendar1->setFixedSize(242, 150);
    v->addWidget(Calendar1);

    cmdCalDECR = button(tr("<< Month"), "cmdCalDECR", tr("Back one month"));
    cmdCalINCR = button(tr("Month >>"), "cmdCalINCR", tr("Forward one month"));
    auto* steps = new QHBoxLayout;
    steps->addWidget(cmdCalDECR);
    steps->addWidget(cmdCalINCR);
    v->addLayout(steps);

    cmdGetToday = button(tr("&Today"), "cmdGetToday", tr("List today's visitors"));
    cmdGetTom = button(tr("&Month"), "cmdGetTom", tr("List every booked day of the month"));
    cmdGetAny = button(tr("Day"), "cmdGetAny", tr("List the visitors of the selected day"));
    auto* lists = new QHBoxLayout;
    lists->addWidget(cmdGetToday);
    lists->addWidget(cmdGetAny);
    lists->addWidget(cmdGetTom);
    v->addLayout(lists);

    laClock = named(new QLabel, "laClock");
    laClock->setAlignment(Qt::AlignCenter);
    QFont f = laClock->font();
    f.setPointSize(f.pointSize() + 3);
    f.setBold(true);
    laClock->setFont(f);
    auto* help = new QLabel(tr("[F1] for Help"));
    cmdAbout = button(tr("About"), "cmdAbout", tr("Product, version and site"));
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(cmdAbout);
    bottom->addWidget(laClock, 1);
    bottom->addWidget(help);
    v->addLayout(bottom);
    v->addStretch();

    cmdPass = button(tr("P&ass"), "cmdPass", tr("Issue and print a visitor pass"));
    cmdPhotos = button(tr("P&hotos"), "cmdPhotos", tr("Manage visitor photos"));
    cmdCamera = button(tr("&Camera"), "cmdCamera", tr("Take the visitor's photo"));
    cmdSettings = button(tr("Settings"), "cmdSettings");
    cmdMultiDELETE = button(tr("Purge"), "cmdMultiDELETE", tr("Delete old bookings in bulk"));
    Command1 = button(tr("Demo"), "Command1", tr("Fill months with invented bookings"));
    auto* tools = new QGridLayout;
    tools->setSpacing(3);
    const std::array<QPushButton*, 6> toolButtons{cmdPass,     cmdPhotos,      cmdCamera,
                                                  cmdSettings, cmdMultiDELETE, Command1};
    for (std::size_t i = 0; i < toolButtons.size(); ++i)
        tools->addWidget(toolButtons[i], int(i / 3), int(i % 3));
    v->addLayout(tools);
    box->setFixedWidth(262);
    return box;
}

QWidget* MainWindow::buildActions() {
    auto* panel = new QWidget;
    auto* h = new QHBoxLayout(panel);
    h->setContentsMargins(0, 0, 0, 0);
    h->setSpacing(4);

    cmdNEW = button(tr("&NEW"), "cmdNEW", tr("Start a new booking"));
    cmdSAVE = button(tr("&SAVE"), "cmdSAVE", tr("Save the booking"));
    cmdDelete = button(tr("Delete"), "cmdDelete", tr("Delete this booking"));
    cmdIN = button(tr("IN"), "cmdIN", tr("Mark the visitor as arrived now (F5)"));
    cmdOUT = button(tr("OUT"), "cmdOUT", tr("Mark the visitor as departed now (F6)"));
    cmdIN->setShortcut(Qt::Key_F5);
    cmdOUT->setShortcut(Qt::Key_F6);
    cmdDayList = button(tr("Day &List"), "cmdDayList", tr("Who is expected, on site and gone today"));
    for (QPushButton* b : {cmdNEW, cmdSAVE, cmdDelete, cmdIN, cmdOUT, cmdDayList})
        h->addWidget(b);
    h->addSpacing(8);

    SearchLa = named(new QLabel(tr("FIND TEXT IN ANY FIELD")), "SearchLa");
    CBListBy = named(new QComboBox, "CBListBy");
    CBListBy->setEditable(true);
    CBListBy->setInsertPolicy(QComboBox::NoInsert);
    CBListBy->setMinimumWidth(170);
    MainFindTB = named(new QLineEdit, "MainFindTB");
    MainFindTB->setPlaceholderText(tr("Find..."));
    cmdMFind = button(tr("Find"), "cmdMFind");
    // The months a search reads, this month unless the operator widens them.
    const QDate thisMonth = SearchMonths::of(m_state.clock.today()).first;
    const QDate firstMonth(m_dates.firstYear(), 1, 1);
    const QDate lastMonth(m_dates.lastYear(), 12, 1);
    dtpFindFrom = named(new MonthEdit(thisMonth, firstMonth, lastMonth), "dtpFindFrom");
    dtpFindTo = named(new MonthEdit(thisMonth, firstMonth, lastMonth), "dtpFindTo");
    dtpFindFrom->setToolTip(tr("Search from this month"));
    dtpFindTo->setToolTip(tr("Search up to this month"));
    auto* fromLabel = new QLabel(tr("from"));
    auto* toLabel = new QLabel(tr("to"));
    fromLabel->setBuddy(dtpFindFrom);
    toLabel->setBuddy(dtpFindTo);
    // The caption and the months above, the kind, the text and Find below.
    auto* captions = new QHBoxLayout;
    captions->setSpacing(4);
    captions->addWidget(SearchLa, 1);
    captions->addWidget(fromLabel);
    captions->addWidget(dtpFindFrom);
    captions->addWidget(toLabel);
    captions->addWidget(dtpFindTo);
    auto* findRow = new QHBoxLayout;
    findRow->addWidget(CBListBy);
    findRow->addWidget(MainFindTB, 1);
    findRow->addWidget(cmdMFind);
    auto* find = new QVBoxLayout;
    find->setSpacing(1);
    find->addLayout(captions);
    find->addLayout(findRow);
    h->addLayout(find, 1);
    h->addSpacing(8);

    cmdPRINT = button(tr("&Print list"), "cmdPRINT", tr("Print the list shown below"));
    cmdExport = button(tr("E&xport CSV..."), "cmdExport",
                       tr("Save the list shown below as a CSV file for a spreadsheet (Alt+X)"));
    auto* output = new QVBoxLayout;
    output->setSpacing(1);
    output->addWidget(cmdPRINT);
    output->addWidget(cmdExport);
    h->addLayout(output);

    // Only the on-site list lets the desk mark arrivals and departures.
    for (QWidget* w : std::initializer_list<QWidget*>{cmdIN, cmdOUT})
        w->setEnabled(false);
    return panel;
}

QWidget* MainWindow::buildGate() {
    auto* panel = new QWidget;
    auto* h = new QHBoxLayout(panel);
    h->setContentsMargins(0, 0, 0, 0);
    h->setSpacing(6);
    ScanTB = named(new QLineEdit, "ScanTB");
    ScanTB->setPlaceholderText(tr("Pass number"));
    ScanTB->setToolTip(
        tr("A bar-code scanner types the pass number and Enter: the visitor is marked IN, or OUT "
           "when on site (F2 comes here)"));
    ScanTB->setMaxLength(20);
    ScanTB->setFixedWidth(ScanTB->fontMetrics().horizontalAdvance(QStringLiteral("0000000000000000")) + 16);
    auto* scanLabel = new QLabel(tr("Scan pass (F2):"));
    scanLabel->setBuddy(ScanTB);
    laOnSiteCounts = named(new QLabel, "laOnSiteCounts");
    laOnSiteCounts->setToolTip(tr("Everyone on today's list, those on site now and those gone"));
    QFont bold = laOnSiteCounts->font();
    bold.setBold(true);
    laOnSiteCounts->setFont(bold);
    ckOnSiteNow = named(new QCheckBox(tr("On site now only")), "ckOnSiteNow");
    ckOverstayed = named(new QCheckBox(tr("Pass expired")), "ckOverstayed");
    ckOverstayed->setToolTip(tr("Only visitors still on site whose pass has expired"));
    cmdRollCall = button(tr("Roll call"), "cmdRollCall",
                         tr("Print everyone on site now, with a box to tick at the muster point (F9)"));
    cmdRollCall->setShortcut(Qt::Key_F9);
    cmdSignOutAll = button(tr("Sign out everyone..."), "cmdSignOutAll",
                           tr("End of day: sign out everyone still on site now"));
    h->addWidget(scanLabel);
    h->addWidget(ScanTB);
    h->addSpacing(12);
    h->addWidget(laOnSiteCounts);
    h->addStretch(1);
    h->addWidget(ckOnSiteNow);
    h->addWidget(ckOverstayed);
    h->addWidget(cmdRollCall);
    h->addWidget(cmdSignOutAll);
    return panel;
}

namespace {

// The name boxes take letters the data files can hold, blanks, hyphens, full stops and apostrophes; typed or
// pasted, anything else is refused while the editing keys keep working.
class NameValidator final : public QValidator {
public:
    using QValidator::QValidator;
    State validate(QString& input, int&) const override {
        return std::all_of(input.cbegin(), input.cend(), BookingEditor::nameCharAccepted) ? Acceptable
                                                                                          : Invalid;
    }
};

} // namespace

void MainWindow::wireEditor() {
    connect(&m_booking, &OpenBooking::fieldChanged, this, [this](Field field) {
        showBox(field);
        showEditorState();
    });
    connect(&m_booking, &OpenBooking::timesChanged, m_timesModel, &BookedTimesModel::cellsChanged);
    connect(&m_booking, &OpenBooking::replaced, this, &MainWindow::showBooking);

    m_editor.regNoShown = [this](const QString&) {
        RegNoTB->repaint();
    };
    m_editor.passLabelShown = [this](const QString&) {
        setLabel(PassPrntdLa, m_editor.view().PassPrntdLa);
        PassPrntdLa->repaint();
    };
    m_editor.rebuildTodayStatus = [this] {
        return m_lists.writeStatusList();
    };
    for (Field field : BookingEditor::kBoxes) {
        QWidget* w = m_boxes[std::size_t(field)];
        if (auto* edit = qobject_cast<QLineEdit*>(w)) {
            connect(edit, &QLineEdit::textEdited, this,
                    [this, field](const QString& text) { m_editor.setBoxText(field, text); });
        } else if (auto* combo = qobject_cast<QComboBox*>(w)) {
            connect(combo, &QComboBox::currentTextChanged, this, [this, field](const QString& text) {
                if (!m_showing)
                    m_editor.setBoxText(field, text);
            });
        }
    }
    for (QLineEdit* e : {FirstNameTB, LastNameTB})
        e->setValidator(new NameValidator(e));
    for (QLineEdit* e : {PersGendTB, PersEmailTB, CatEMATB})
        e->installEventFilter(this);

    // The dialogs edit the booking itself; the boxes follow its signals and nothing is re-read or marked
    // saved behind the operator's back.
    connect(cmdPersonal, &QPushButton::clicked, this,
            [this] { PersonalDetailsDialog(m_state, m_booking, this).exec(); });
    connect(cmdLocation, &QPushButton::clicked, this, [this] {
        LocationDetailsDialog(m_state, m_booking, m_workDescriptions, m_accessAreas, this).exec();
    });
    connect(cmdSAVE, &QPushButton::clicked, this, [this] {
        m_editor.cmdSAVE();
        showEditorState();
    });
    connect(cmdNEW, &QPushButton::clicked, this, [this] {
        m_state.help.setTopic(HelpTopic::NewBooking);
        m_appliedFocus = BookingEditor::Focus::None;
        m_editor.cmdNEW();
        showEditorState();
    });
    connect(cmdDelete, &QPushButton::clicked, this, [this] {
        m_editor.cmdDelete();
        showEditorState();
    });
    // Each press sends the focus to the search box again, even when it was sent there last time.
    connect(cmdIN, &QPushButton::clicked, this, [this] {
        m_appliedFocus = BookingEditor::Focus::None;
        m_editor.cmdIN();
        showEditorState();
    });
    connect(cmdOUT, &QPushButton::clicked, this, [this] {
        m_appliedFocus = BookingEditor::Focus::None;
        m_editor.cmdOUT();
        showEditorState();
    });
}

void MainWindow::wireTimes() {
    TimeGrid->installEventFilter(this);
    connect(TimeGrid->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) {
                m_state.help.setTopic(HelpTopic::BookedTimes);
                m_times.setCurrentCell(current.isValid() ? current.row() + 1 : 0, current.column());
            });
    connect(cbTime, &QComboBox::textActivated, this, [this](const QString& text) {
        m_times.chooseTime(text);
        laSelTime->setText(m_times.timeCaption());
    });
    connect(cmdADD, &QPushButton::clicked, this, [this] {
        m_state.help.setTopic(HelpTopic::BookedTimes);
        m_times.cmdADD();
        if (m_times.currentRow() == 0)
            cbTime->setCurrentIndex(-1);
        TimeGrid->setFocus();
    });
    connect(cmdSUB, &QPushButton::clicked, this, [this] {
        m_state.help.setTopic(HelpTopic::BookedTimes);
        m_times.cmdSUB();
    });
    connect(cmdCLEARAll, &QPushButton::clicked, this, [this] { m_times.cmdCLEARAll(); });
}

void MainWindow::wireDates() {
    // A new day lists that day; a new month or year lists the month's diary.
    connect(CBGetDay, &QComboBox::textActivated, this, [this] {
        takeDateBoxes();
        listDay();
    });
    for (QComboBox* c : {CBGetMonth, CBGetYear})
        connect(c, &QComboBox::textActivated, this, [this] {
            takeDateBoxes();
            listMonth();
        });
    connect(Calendar1, &QCalendarWidget::clicked, this, [this](QDate date) {
        m_dates.setDate(date);
        listDay();
    });
    connect(cmdCalDECR, &QPushButton::clicked, this, [this] {
        m_dates.cmdCalDECR();
        showDateState();
    });
    connect(cmdCalINCR, &QPushButton::clicked, this, [this] {
        m_dates.cmdCalINCR();
        showDateState();
    });

    m_clockTimer = new QTimer(this);
    connect(m_clockTimer, &QTimer::timeout, this, &MainWindow::tickClock);
    tickClock();
    if (m_state.settings.ckEnbl_RTC == u"1")
        m_clockTimer->start(1000);
}

void MainWindow::wireLists() {
    // Short enough to follow another desk within a second, long enough to take a burst of its changes at
    // once.
    m_relistTimer = new QTimer(this);
    m_relistTimer->setSingleShot(true);
    m_relistTimer->setInterval(150);
    connect(m_relistTimer, &QTimer::timeout, this, &MainWindow::relistChanged);
    // A list read now has whatever a relist still to come would read.
    m_lists.aboutToRead = [this] {
        m_relistTimer->stop();
        if (m_watcher)
            m_watcher->seenUpToNow();
    };
    CBListBy->addItems(RecordSearch::kindItems());
    CBListBy->setCurrentIndex(0);
    m_lists.tableChanged = [this](const ListTable& table) {
        showTable(table);
    };
    m_editor.refreshList = [this] {
        refreshList();
    };

    connect(cmdGetAny, &QPushButton::clicked, this, [this] {
        m_state.help.setTopic(HelpTopic::DayList);
        listDay();
    });
    connect(cmdGetToday, &QPushButton::clicked, this, [this] {
        m_state.help.setTopic(HelpTopic::DayList);
        m_dates.cmdGetToday(m_state.clock);
        showDateState();
        listDay();
    });
    connect(cmdGetTom, &QPushButton::clicked, this, [this] {
        m_state.help.setTopic(HelpTopic::MonthList);
        listMonth();
    });
    connect(cmdDayList, &QPushButton::clicked, this, [this] {
        m_state.help.setTopic(HelpTopic::OnSiteList);
        m_lists.showDayStatus();
        showListState();
    });
    connect(CBListBy, &QComboBox::textActivated, this, [this](const QString& text) {
        if (const auto kind = RecordSearch::kindFromText(text))
            SearchLa->setText(RecordSearch::caption(*kind));
        MainFindTB->setFocus();
    });
    CBListBy->installEventFilter(this);
    const auto find = [this] {
        m_state.help.setTopic(HelpTopic::Find);
        m_lists.startSearch(searchRequest());
        showListState();
    };
    connect(cmdMFind, &QPushButton::clicked, this, find);
    connect(MainFindTB, &QLineEdit::returnPressed, this, find);
    // The first month never comes after the last: moving one past the other takes the other along.
    connect(dtpFindFrom, &QDateEdit::dateChanged, this, [this](QDate from) {
        if (from > dtpFindTo->date())
            dtpFindTo->setDate(from);
    });
    connect(dtpFindTo, &QDateEdit::dateChanged, this, [this](QDate to) {
        if (to < dtpFindFrom->date())
            dtpFindFrom->setDate(to);
    });

    // Moving the highlight, by mouse or keyboard, opens that row: the highlighted row and the editor always
    // show the same booking.
    connect(StatGrid->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (!m_selectingRow && current.isValid())
                    openRow(current.row());
            });
    // A click on a heading rebuilds the list from the file, then sorts it by that column; a second click on
    // the same heading turns the order round.
    StatGrid->horizontalHeader()->setSortIndicatorShown(true);
    StatGrid->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    connect(StatGrid->horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) {
        const Qt::SortOrder order =
            m_listView->sortColumn() == column && m_listView->sortOrder() == Qt::AscendingOrder
                ? Qt::DescendingOrder
                : Qt::AscendingOrder;
        refreshList();
        {
            const QScopedValueRollback<bool> quiet(m_selectingRow, true);
            m_listView->sort(column, order);
            m_listView->invalidate();
        }
        StatGrid->horizontalHeader()->setSortIndicator(column, order);
        selectBookingRow();
    });
}

void MainWindow::wireTools() {
    connect(cmdPass, &QPushButton::clicked, this, [this] {
        if (!m_editor.bookingOpen()) {
            m_state.prompter.tell(QStringLiteral("Porvane 90"),
                                  tr("Open or save a booking before issuing its pass."));
            return;
        }
        if (!m_editor.settleBeforePass()) {
            showEditorState();
            return;
        }
        PassWindow::Hooks hooks;
        hooks.openCamera = [this](QWidget* parent) {
            CameraWindow(m_state, parent).exec();
        };
        hooks.openPhotos = [this](QWidget* parent) {
            PhotoManagerWindow(m_state, parent).exec();
        };
        PassWindow window(m_state, hooks, this);
        window.exec();
        afterRecordWindow(window.passRemoved());
    });
    connect(cmdPhotos, &QPushButton::clicked, this, [this] {
        PhotoManagerWindow(m_state, this).exec();
        afterRecordWindow();
    });
    connect(cmdCamera, &QPushButton::clicked, this, [this] {
        if (!m_editor.bookingOpen()) {
            m_state.prompter.tell(QStringLiteral("Porvane 90"),
                                  tr("Open or save a booking before taking its photo."));
            return;
        }
        CameraWindow(m_state, this).exec();
        afterRecordWindow();
    });
    connect(cmdPRINT, &QPushButton::clicked, this, &MainWindow::printList);
    connect(cmdExport, &QPushButton::clicked, this, &MainWindow::exportList);
    cmdMultiDELETE->setEnabled(!BulkDeletion(m_state).switchedOff());
    connect(cmdMultiDELETE, &QPushButton::clicked, this, [this] {
        if (BulkDeletion(m_state).switchedOff())
            return;
        if (MultiDeleteWindow(m_state, m_dates, this).exec() != QDialog::Accepted)
            return;
        // Only a list the operator has asked for is built again; the title shows the result either way.
        if (m_state.listMode != ListMode::None)
            refreshList();
        showTitle();
    });
    connect(cmdSettings, &QPushButton::clicked, this, [this] {
        const SettingsWindow::Outcome outcome = SettingsWindow::openWithPassword(
            m_state.AppPath, m_state.settings, m_state.prompter, m_state.help, reachServer, this);
        if (outcome.pickListsChanged)
            fillPickLists();
        if (outcome.restartPending) {
            m_restarting = true;
            close();
            return;
        }
        if (outcome.storeChanged) {
            useStoreOfSettings(m_state);
            watch(watcherOfSettings(m_state));
            if (m_state.listMode != ListMode::None)
                refreshList();
        }
        showEditorState();
        showListState();
    });
    connect(cmdAbout, &QPushButton::clicked, this, [this] { AboutWindow(m_state, this).exec(); });
    connect(Command1, &QPushButton::clicked, this, [this] {
        if (DemoOffer::run(m_state, m_dates.selectedDate()))
            listMonth();
    });
}

void MainWindow::wireGate() {
    connect(ScanTB, &QLineEdit::returnPressed, this, &MainWindow::scanPass);
    auto* toScan = new QShortcut(QKeySequence(Qt::Key_F2), this);
    connect(toScan, &QShortcut::activated, this, [this] {
        ScanTB->setFocus();
        ScanTB->selectAll();
    });
    // One filter at a time: on site now, or on site with an expired pass.
    connect(ckOnSiteNow, &QCheckBox::toggled, this, [this](bool on) {
        if (on)
            ckOverstayed->setChecked(false);
        showOnSiteFilter();
    });
    connect(ckOverstayed, &QCheckBox::toggled, this, [this](bool on) {
        if (on)
            ckOnSiteNow->setChecked(false);
        showOnSiteFilter();
    });
    connect(cmdRollCall, &QPushButton::clicked, this, &MainWindow::printRollCall);
    connect(cmdSignOutAll, &QPushButton::clicked, this, &MainWindow::signOutEveryone);
    StatGrid->installEventFilter(this);
}

void MainWindow::scanPass() {
    const QString typed = ScanTB->text();
    ScanTB->clear();
    if (typed.trimmed().isEmpty() || m_editor.readOnly())
        return;
    m_state.help.setTopic(HelpTopic::OnSiteList);
    // The on-site list is rebuilt first, so the scan is judged by today's list as it is now, and shown.
    m_lists.showDayStatus();
    showListState();
    const GateScan::Decision d = GateScan::decide(m_state.files(), m_state.clock.today(), typed);
    if (d.step == GateScan::Step::Refused) {
        QApplication::beep();
        m_state.prompter.tell(QStringLiteral("Porvane 90"), d.refusal, Icon::Exclamation);
    } else if (m_editor.openRow(d.regNo)) {
        selectBookingRow();
        m_appliedFocus = BookingEditor::Focus::None;
        if (d.step == GateScan::Step::In)
            m_editor.cmdIN();
        else
            m_editor.cmdOUT();
    } else {
        selectBookingRow(); // the operator kept the booking in the editor
    }
    showEditorState();
    ScanTB->setFocus();
}

void MainWindow::signOutEveryone() {
    if (m_editor.readOnly())
        return;
    m_state.help.setTopic(HelpTopic::OnSiteList);
    if (m_lists.writeStatusList() && EndOfDay::signOutEveryone(m_state))
        m_editor.showLabels();
    m_lists.showDayStatus();
    showListState();
    showEditorState();
}

void MainWindow::showOnSiteFilter() {
    const bool onSiteList = m_state.listMode == ListMode::OnSite;
    const OnSiteRows::Filter filter = !onSiteList                 ? OnSiteRows::Filter::All
                                      : ckOnSiteNow->isChecked()  ? OnSiteRows::Filter::OnSiteNow
                                      : ckOverstayed->isChecked() ? OnSiteRows::Filter::Overstayed
                                                                  : OnSiteRows::Filter::All;
    {
        const QScopedValueRollback<bool> quiet(m_selectingRow, true);
        m_listView->setFilter(filter, m_state.clock.today());
    }
    laOnSiteCounts->setText(onSiteList ? OnSiteRows::countsText(m_listModel->table()) : QString());
    selectBookingRow();
}

void MainWindow::fillPickLists() {
    const QString ini = pickListsPath(m_state.AppPath);
    const PickLists main = LoadMainPickLists(ini);
    const PickLists detail = LoadDetailPickLists(ini);
    m_workDescriptions = detail.first;
    m_accessAreas = detail.second;
    // Refilling must not count as an edit of the open booking.
    const bool showing = m_showing;
    m_showing = true;
    for (auto [combo, entries] : {std::pair{CataCB, main.first}, std::pair{Dept1CB, main.second}}) {
        const QString current = combo->currentText();
        combo->clear();
        combo->addItems(entries);
        combo->setCurrentText(current);
    }
    m_showing = showing;
}

void MainWindow::afterRecordWindow(bool passRemoved) {
    // The pass and photo windows change the record's pass and photo state.
    m_editor.recordWindowClosed(passRemoved);
    showEditorState();
}

void MainWindow::printList() {
    // What the grid shows is printed: its order, and only the rows a filter leaves.
    const ListTable table = m_listView->shownTable();
    if (table.listedCount() == 0) {
        m_state.prompter.tell(QStringLiteral("Porvane 90"), tr("There is no list to print."),
                              Icon::Information);
        return;
    }
    const QString title = ListPrinting::title(m_state.listMode, m_state.settings.SiteName, m_dates,
                                              m_state.clock.now().time(), m_lists.searchedMonths());
    const QDate today = m_state.clock.today();
    const QString failure = PrintDialog::print(
        m_state.prompter, this,
        {tr("Visitor list"),
         tr("Visitor list %1.pdf").arg(m_state.clock.now().toString(QStringLiteral("yyyy-MM-dd hhmm"))),
         tr("the list"), true, [&](QPagedPaintDevice& device) {
             return ListPrinting::print(device, table, table.listedCount(), title, today);
         }});
    if (!failure.isEmpty())
        m_state.prompter.tell(QStringLiteral("Porvane 90"), failure);
}

void MainWindow::printRollCall() {
    // Printed from the on-site list as it is now, rebuilt from the files, and shown with it.
    m_state.help.setTopic(HelpTopic::OnSiteList);
    m_lists.showDayStatus();
    showListState();
    const QList<RollCallEntry> entries = RollCallSheet::entries(m_lists.table(), m_state.dataPath());
    const QDateTime made = m_state.clock.now();
    const QString failure = PrintDialog::print(
        m_state.prompter, this,
        {tr("Roll call"), tr("Roll call %1.pdf").arg(made.toString(QStringLiteral("yyyy-MM-dd hhmm"))),
         tr("the roll call"), true, [&](QPagedPaintDevice& device) {
             return RollCallSheet::print(device, entries, m_state.settings.SiteName, made);
         }});
    if (!failure.isEmpty())
        m_state.prompter.tell(QStringLiteral("Porvane 90"), failure);
}

void MainWindow::exportList() {
    // What the grid shows is saved: its order, and only the rows a filter leaves.
    ListExport::run(m_state, m_listView->shownTable());
}

GridLists::SearchRequest MainWindow::searchRequest() const {
    return {SearchMonths::between(dtpFindFrom->date(), dtpFindTo->date()), CBListBy->currentText(),
            MainFindTB->text()};
}

void MainWindow::listDay() {
    m_lists.selectDayRecord(m_dates);
    showDateState();
    showListState();
}

void MainWindow::listMonth() {
    m_lists.selectMonthRecord(m_dates);
    showDateState();
    showListState();
}

void MainWindow::refreshList() {
    m_lists.refresh(m_dates, searchRequest());
    showListState();
}

void MainWindow::filesChanged(const QStringList& keys) {
    const QStringList shown = m_lists.shownFiles();
    const bool affected = keys.isEmpty() || std::any_of(keys.cbegin(), keys.cend(), [&](const QString& key) {
                              return shown.contains(key);
                          });
    if (affected && !m_relistTimer->isActive())
        m_relistTimer->start();
}

void MainWindow::relistChanged() {
    // A question or window on screen may be half way through a change; the list follows once it is closed.
    if (QApplication::activeModalWidget()) {
        m_relistTimer->start();
        return;
    }
    m_lists.relist();
}

void MainWindow::watch(std::unique_ptr<ChangeWatcher> watcher) {
    m_watcher = std::move(watcher);
    if (!m_watcher)
        return;
    connect(m_watcher.get(), &ChangeWatcher::filesChanged, this, &MainWindow::filesChanged);
    connect(m_watcher.get(), &ChangeWatcher::lost, this, [this](const QString& why) {
        m_state.showResultInTitle(tr("Lists are not kept up to date: %1").arg(why));
        m_watcherLost = m_state.mainTitle;
        showTitle();
    });
    connect(m_watcher.get(), &ChangeWatcher::back, this, [this] {
        if (m_state.mainTitle == m_watcherLost) {
            m_state.mainTitle = AppState::plainTitle();
            showTitle();
        }
    });
}

void MainWindow::showTable(const ListTable& table) {
    // A list rebuilt after IN, OUT or a save keeps the operator's place in it.
    const bool sameList = m_listModel->table().columnCount() == table.columnCount();
    const int scrolled = StatGrid->verticalScrollBar()->value();
    {
        const QScopedValueRollback<bool> quiet(m_selectingRow, true);
        // Another kind of list starts in its own order.
        if (!sameList) {
            m_listView->sort(-1);
            StatGrid->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
        }
        m_listModel->setTable(table);
    }
    showOnSiteFilter();
    // Numbers, dates and times show whole: a column that never wraps is at least as wide as the first rows'
    // texts, which are all of one shape.
    const QFontMetrics metrics(StatGrid->font());
    const int sampled = std::min(table.listedCount(), 200);
    for (int c = 0; c < table.columnCount(); ++c) {
        int width = table.columns[c].width > 0 ? table.columns[c].width : 100;
        for (int r = 0; r < sampled && !table.columns[c].wraps; ++r)
            width = std::max(width, metrics.horizontalAdvance(table.text(r, c).trimmed()) + 12);
        StatGrid->setColumnWidth(c, width);
    }
    if (sameList)
        StatGrid->verticalScrollBar()->setValue(scrolled);
    selectBookingRow();
}

void MainWindow::selectBookingRow() {
    const QScopedValueRollback<bool> quiet(m_selectingRow, true);
    const QString regNo = m_booking.regNo();
    const ListTable& table = m_listModel->table();
    for (int row = 0; !regNo.isEmpty() && row < table.listedCount(); ++row) {
        const int shown = m_listView->shownRow(row);
        if (shown >= 0 && table.text(row, 0).trimmed() == regNo) {
            const QModelIndex current = StatGrid->currentIndex();
            const QModelIndex index = m_listView->index(shown, current.isValid() ? current.column() : 1);
            StatGrid->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                                   QItemSelectionModel::Rows);
            return;
        }
    }
    StatGrid->selectionModel()->clearSelection();
    StatGrid->selectionModel()->setCurrentIndex(QModelIndex(), QItemSelectionModel::NoUpdate);
}

void MainWindow::showListState() {
    const GridLists::View& v = m_lists.view();
    cmdIN->setEnabled(v.inOutEnabled && !m_state.settings.ReadOnlyMode());
    cmdOUT->setEnabled(v.inOutEnabled && !m_state.settings.ReadOnlyMode());
    const bool onSiteList = m_state.listMode == ListMode::OnSite;
    for (QCheckBox* c : {ckOnSiteNow, ckOverstayed})
        c->setEnabled(onSiteList);
    showOnSiteFilter();
    CBGetDay->setStyleSheet(v.dayBoxGreyed ? QStringLiteral("color: #a0a0a0;") : QString());
    showTitle();
}

void MainWindow::openRow(int shownRow) {
    const int row = m_listView->tableRow(shownRow);
    if (row < 0 || row >= m_listModel->table().listedCount()) {
        selectBookingRow();
        return;
    }
    const QString regNo = m_listModel->table().text(row, 0).trimmed();
    if (regNo.isEmpty() || !m_editor.openRow(regNo))
        selectBookingRow(); // the operator kept the booking in the editor, or the row holds none
    showEditorState();
}

void MainWindow::takeDateBoxes() {
    m_dates.setTexts(CBGetDay->currentText(), CBGetMonth->currentText(), CBGetYear->currentText());
}

void MainWindow::showDateState() {
    const QSignalBlocker b1(CBGetDay), b2(CBGetMonth), b3(CBGetYear), b4(Calendar1);
    CBGetDay->setCurrentText(m_dates.dayText());
    CBGetMonth->setCurrentText(m_dates.monthText());
    CBGetYear->setCurrentText(m_dates.yearText());
    const QDate shown = m_dates.calendarDate();
    if (shown.isValid()) {
        Calendar1->setCurrentPage(shown.year(), shown.month());
        Calendar1->setSelectedDate(shown);
        if (shown.year() != m_times.year() || shown.month() != m_times.month()) {
            m_times.setMonth(shown.year(), shown.month());
            m_timesModel->reload();
        }
    }
    if (laBookMonth)
        showBookingMonth();
}

void MainWindow::tickClock() {
    laClock->setText(m_state.clock.now().toString(QStringLiteral("HH:mm")));
}

void MainWindow::showBox(Field field) {
    QWidget* w = m_boxes[std::size_t(field)];
    if (!w)
        return;
    const QScopedValueRollback<bool> showing(m_showing, true);
    const QString& text = m_booking[field];
    if (auto* edit = qobject_cast<QLineEdit*>(w)) {
        if (edit->text() != text) {
            edit->setText(text);
            if (!edit->hasFocus())
                edit->setCursorPosition(0); // a long organisation reads from its start
        }
    } else if (auto* combo = qobject_cast<QComboBox*>(w)) {
        if (combo->currentText() != text)
            combo->setCurrentText(text);
    }
}

// Another booking, or none, is in the editor, or the one there was saved.
void MainWindow::showBooking() {
    for (Field field : BookingEditor::kBoxes)
        showBox(field);
    m_timesModel->cellsChanged();
    // Down to the last booked day, never sideways.
    if (const int day = m_times.lastBookedDay(); day > 0)
        TimeGrid->scrollTo(m_timesModel->index(day - 1, 0));
    TimeGrid->horizontalScrollBar()->setValue(0);
    selectBookingRow();
    showEditorState();
}

// The month of the booking beside its number, red while the date boxes show another month.
void MainWindow::showBookingMonth() {
    laBookMonth->setText(m_editor.bookingMonthText());
    setStyleOnce(laBookMonth, m_editor.bookingMonthDiffers() ? QStringLiteral("color: #c00000;") : QString());
}

void MainWindow::showEditorState() {
    const BookingEditor::View& v = m_editor.view();
    const bool readOnly = m_editor.readOnly();
    for (Field field : BookingEditor::kBoxes)
        m_boxes[std::size_t(field)]->setEnabled(!readOnly || field == Field::RegNo);
    setStyleOnce(RegNoTB, QStringLiteral("background-color: %1;").arg(m_editor.regNoBackground().name()));
    showBookingMonth();
    setLabel(PassPrntdLa, v.PassPrntdLa);
    setLabel(PhotoOnFLa, v.PhotoOnFLa);
    setLabel(LaON_Site, v.LaON_Site);
    setLabel(LaOFFSite, v.LaOFFSite);
    // The editor's focus request stays in its view; act on it only when it changes, so typing keeps its
    // caret.
    if (v.focus != BookingEditor::Focus::None && (v.focus != m_appliedFocus || v.caret != m_appliedCaret)) {
        m_appliedFocus = v.focus;
        m_appliedCaret = v.caret;
        if (v.focus == BookingEditor::Focus::MainFind) {
            MainFindTB->setFocus();
            MainFindTB->selectAll();
        } else {
            QLineEdit* target = v.focus == BookingEditor::Focus::FirstName ? FirstNameTB : LastNameTB;
            target->setFocus();
            target->setCursorPosition(v.caret);
        }
    }
    for (QWidget* w : std::initializer_list<QWidget*>{cmdNEW, cmdSAVE, cmdDelete, cmdADD, cmdSUB, cmdCLEARAll,
                                                      ScanTB, cmdSignOutAll})
        w->setEnabled(!readOnly);
    showTitle();
}

void MainWindow::showTitle() {
    setWindowTitle(m_state.mainTitle);
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress && watched == PersGendTB) {
        m_editor.toggleGender();
        showEditorState();
        return true;
    }
    if (event->type() == QEvent::FocusOut && (watched == PersEmailTB || watched == CatEMATB)) {
        m_editor.leaveEmail(watched == PersEmailTB ? Field::Email : Field::OrgEmail);
        showEditorState();
    }
    if (event->type() == QEvent::FocusOut && watched == CBListBy)
        CBListBy->setCurrentText(RecordSearch::settledKindText(CBListBy->currentText()));
    if (event->type() == QEvent::KeyPress && watched == TimeGrid) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Delete) {
            m_times.deleteKey();
            return true;
        }
        if (!key->text().isEmpty() &&
            m_times.keyPress(key->text().front()) == BookedTimes::KeyResult::Consumed)
            return true;
    }
    if (event->type() == QEvent::KeyPress && watched == StatGrid) {
        // Enter on a row opens its booking (if the highlight has not already) and goes on to the editor.
        const auto* key = static_cast<QKeyEvent*>(event);
        const QModelIndex current = StatGrid->currentIndex();
        if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) && current.isValid()) {
            const int row = m_listView->tableRow(current.row());
            const QString regNo = m_listModel->table().text(row, 0).trimmed();
            if (!regNo.isEmpty() && regNo != m_booking.regNo())
                openRow(current.row());
            if (!regNo.isEmpty() && regNo == m_booking.regNo())
                FirstNameTB->setFocus();
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
    if (m_state.help.openOnKey(*event))
        return;
    QMainWindow::keyPressEvent(event);
}

void MainWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        m_state.help.setTopic(HelpTopic::Desk);
        // The calendar comes back to today when the operator returns to an idle desk.
        if (m_state.settings.ckCalAOatT == u"1" && !m_editor.bookingOpen() && !m_booking.newPending()) {
            m_dates.cmdGetToday(m_state.clock);
            listDay();
        }
    }
    QMainWindow::changeEvent(event);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!m_editor.closeRequested(!m_restarting)) {
        event->ignore();
        showEditorState();
        return;
    }
    event->accept();
    qApp->closeAllWindows();
}

} // namespace porvane
