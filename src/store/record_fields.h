#pragma once

#include <array>
#include <cstddef>

namespace porvane {

// The fields of a booking, in the order in which the record line stores them.
enum class Field : int {
    RegNo,
    FirstName,
    LastName,
    Gender,
    MobileTel,
    CarReg,
    Email,
    Salutation,
    OurRef,
    AddressLine1,
    Town,
    County,
    Postcode,
    HomeTel,
    DateOfBirth,
    IllnessFlag,
    AidsUsed,
    IllnessDetails,
    KinName,
    KinHomeTel,
    KinWorkTel,
    KinEmail,
    Category,
    Department,
    Organisation,
    PartySize,
    OrgAddress,
    OrgDirectTel,
    OrgPostcode,
    OrgAltTel,
    OrgEmail,
    Visiting,
    VisitingTel,
    VisitingPager,
    Location,
    WorkDescription,
    AccessAreas,
    PassStart,
    PassEnd,
    PassPeriod,
    PassIssued,
    PhotoOnFile,
    TimeOnSite,
    TimeOffSite,
};

inline constexpr int kFieldCount = int(Field::TimeOffSite) + 1;

struct FieldSpec {
    Field field;
    const char* name;
    int column; // 1-based first column in the record line
    int width;
};

// The one description of the record line. Writer, reader, change test, lists and search all use it.
inline constexpr std::array<FieldSpec, kFieldCount> kRecordFields{{
    {Field::RegNo, "RegNo", 1, 12},
    {Field::FirstName, "FirstName", 14, 16},
    {Field::LastName, "LastName", 31, 18},
    {Field::Gender, "Gender", 50, 1},
    {Field::MobileTel, "MobileTel", 52, 16},
    {Field::CarReg, "CarReg", 69, 10},
    {Field::Email, "Email", 80, 42},
    {Field::Salutation, "Salutation", 123, 6},
    {Field::OurRef, "OurRef", 130, 16},
    {Field::AddressLine1, "AddressLine1", 147, 32},
    {Field::Town, "Town", 180, 18},
    {Field::County, "County", 199, 18},
    {Field::Postcode, "Postcode", 218, 10},
    {Field::HomeTel, "HomeTel", 229, 16},
    {Field::DateOfBirth, "DateOfBirth", 246, 10},
    {Field::IllnessFlag, "IllnessFlag", 257, 2},
    {Field::AidsUsed, "AidsUsed", 260, 32},
    {Field::IllnessDetails, "IllnessDetails", 293, 100},
    {Field::KinName, "KinName", 394, 32},
    {Field::KinHomeTel, "KinHomeTel", 427, 16},
    {Field::KinWorkTel, "KinWorkTel", 444, 16},
    {Field::KinEmail, "KinEmail", 461, 42},
    {Field::Category, "Category", 504, 20},
    {Field::Department, "Department", 525, 24},
    {Field::Organisation, "Organisation", 550, 50},
    {Field::PartySize, "PartySize", 601, 3},
    {Field::OrgAddress, "OrgAddress", 605, 64},
    {Field::OrgDirectTel, "OrgDirectTel", 670, 16},
    {Field::OrgPostcode, "OrgPostcode", 687, 10},
    {Field::OrgAltTel, "OrgAltTel", 698, 16},
    {Field::OrgEmail, "OrgEmail", 715, 42},
    {Field::Visiting, "Visiting", 758, 36},
    {Field::VisitingTel, "VisitingTel", 795, 16},
    {Field::VisitingPager, "VisitingPager", 812, 16},
    {Field::Location, "Location", 829, 28},
    {Field::WorkDescription, "WorkDescription", 858, 38},
    {Field::AccessAreas, "AccessAreas", 897, 38},
    {Field::PassStart, "PassStart", 936, 10},
    {Field::PassEnd, "PassEnd", 947, 10},
    {Field::PassPeriod, "PassPeriod", 958, 10},
    {Field::PassIssued, "PassIssued", 969, 19},
    {Field::PhotoOnFile, "PhotoOnFile", 989, 1},
    {Field::TimeOnSite, "TimeOnSite", 991, 5},
    {Field::TimeOffSite, "TimeOffSite", 996, 5},
}};

constexpr const FieldSpec& fieldSpec(Field f) {
    return kRecordFields[std::size_t(f)];
}

// The number of columns from the first column of first through the last column of last.
constexpr int spanWidth(Field first, Field last) {
    return fieldSpec(last).column + fieldSpec(last).width - fieldSpec(first).column;
}

// Fields that save-new and update write; arrival and departure are only ever written in place.
inline constexpr Field kLastWrittenField = Field::PhotoOnFile;

inline constexpr int kRecordLineLength = 1186;
inline constexpr int kBookedTimesColumn = 1060;
inline constexpr int kBookedSlotCount = 31;
inline constexpr int kBookedSlotWidth = 4;
inline constexpr int kBookedTimesSize = 32; // index 31 is never filled

constexpr int bookedSlotColumn(int day) {
    return kBookedTimesColumn + (day - 1) * kBookedSlotWidth;
}

} // namespace porvane
