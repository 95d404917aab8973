#include "desk/location_details.h"
#include "desk/personal_details.h"
#include "desk_fixture.h"

using namespace porvane;

class DetailDialogs : public porvane::test::DeskFixture {};

TEST_F(DetailDialogs, personalCancelAfterClearRestoresEveryField) {
    int n = 0;
    for (Field f : PersonalDetails::kEditable)
        state.record[f] = QStringLiteral("value %1").arg(++n);
    state.record[Field::IllnessFlag] = QStringLiteral("1");
    state.record[Field::IllnessDetails] = QStringLiteral("line one\r\nline two");
    const CurrentRecord before = state.record;

    PersonalDetails dialog(state);
    dialog.open();
    EXPECT_EQ(state.HelpContext, 61);
    dialog.clear();
    for (Field f : PersonalDetails::kEditable)
        EXPECT_EQ(state.record[f], f == Field::IllnessFlag ? u"0" : u"") << fieldSpec(f).name;
    dialog.cancel();
    for (Field f : PersonalDetails::kEditable)
        EXPECT_EQ(state.record[f], before[f]) << fieldSpec(f).name;
}

TEST_F(DetailDialogs, personalEditsGoStraightIntoTheRecordAndTheContactEmailIsChecked) {
    state.record[Field::FirstName] = QStringLiteral("Jo");
    state.record[Field::LastName] = QStringLiteral("Li");
    state.record.MarkRecordSaved();
    PersonalDetails dialog(state);
    dialog.open();
    EXPECT_EQ(dialog.fullName(), u"Jo Li");
    dialog.setText(Field::DateOfBirth, QStringLiteral("01-02-1980"));
    dialog.setText(Field::FirstName, QStringLiteral("ignored")); // shown only
    dialog.setIllnessTicked(true);
    dialog.setText(Field::KinEmail, QStringLiteral("   "));
    dialog.leaveKinEmail();
    EXPECT_TRUE(prompter.messages().isEmpty()) << "blanks are no address";
    dialog.setText(Field::KinEmail, QStringLiteral("ANN@HOME"));
    dialog.leaveKinEmail();
    EXPECT_EQ(prompter.texts().size(), 1);
    EXPECT_EQ(prompter.last().title, u"Porvane 90 [Bad Domain Identity]");
    dialog.ok();
    EXPECT_EQ(state.record[Field::KinEmail], u"ann@home");
    EXPECT_EQ(state.record[Field::DateOfBirth], u"01-02-1980");
    EXPECT_EQ(state.record[Field::IllnessFlag], u"1");
    EXPECT_EQ(state.record[Field::FirstName], u"Jo");
    EXPECT_TRUE(state.record.TestRecordChanged());
}

TEST_F(DetailDialogs, locationCancelAfterClearRestoresEveryField) {
    const Field fields[] = {Field::OurRef,   Field::Visiting,        Field::VisitingTel, Field::VisitingPager,
                            Field::Location, Field::WorkDescription, Field::AccessAreas};
    int n = 0;
    for (Field f : fields)
        state.record[f] = QStringLiteral("value %1").arg(++n);
    state.record.additionalInfo = QStringLiteral("bring boots");
    state.record.restrictions = QStringLiteral("no lab");
    const CurrentRecord before = state.record;

    LocationDetails dialog(state);
    dialog.open({QStringLiteral(" Survey")}, {});
    EXPECT_EQ(state.HelpContext, 60);
    EXPECT_TRUE(dialog.accessAreaItems().isEmpty());
    dialog.clear();
    EXPECT_EQ(state.record[Field::Visiting], u"");
    EXPECT_EQ(state.record[Field::WorkDescription], u" -  Select  - ");
    EXPECT_EQ(state.record[Field::AccessAreas], u" -  Select  - ");
    EXPECT_EQ(state.record.additionalInfo, u"");
    dialog.cancel();
    for (Field f : fields)
        EXPECT_EQ(state.record[f], before[f]) << fieldSpec(f).name;
    EXPECT_EQ(state.record.additionalInfo, u"bring boots");
    EXPECT_EQ(state.record.restrictions, u"no lab");
}

TEST_F(DetailDialogs, largeTextBoxesAnswerWithNotImplemented) {
    LocationDetails dialog(state);
    dialog.open({}, {});
    dialog.setAdditionalInfo(QStringLiteral("kept"));
    dialog.additionalInfoAction();
    dialog.restrictionsAction();
    EXPECT_EQ(prompter.texts(),
              (QStringList{QStringLiteral("Additional Information Text - Not implemented on this version"),
                           QStringLiteral("Restrictions Text - Not implemented on this version")}));
    EXPECT_EQ(prompter.last().title, u"Porvane 90");
    EXPECT_EQ(state.record.additionalInfo, u"kept");
}
