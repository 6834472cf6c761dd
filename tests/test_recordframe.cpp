// The record frame: members, presence and defaults, validation, Check,
// equality and copy-on-write, told on Coordinate, Area and Targetareas.

#include "testsupport.h"

#include <cmath>
#include <limits>

using namespace Morvane;
using ORBELIN::IncompleteDefinitionException;
using ORBELIN::OutOfRangeException;
using testsupport::throwsWith;

namespace {
const double NaN = std::numeric_limits<double>::quiet_NaN();
}

// --- the block and the getters ------------------------------------------------------

TEST(RecordFrame, GetterOnFreshRecordCreatesBlockButSetsNothing)
{
    Coordinate c;
    EXPECT_FALSE(c.IsInitialized());
    EXPECT_EQ(0.0, c.GetLongitude());
    EXPECT_TRUE(c.IsInitialized());
    EXPECT_FALSE(c.IsLongitudeSet());
    EXPECT_FALSE(c.HasData());
    EXPECT_FALSE(c.AnyData());
}

TEST(RecordFrame, QueriesOnAFreshRecordCreateNoBlock)
{
    Coordinate c;
    EXPECT_FALSE(c.IsLongitudeSet());
    EXPECT_FALSE(c.HasData());
    EXPECT_FALSE(c.AnyData());
    c.ResetLatitude();
    c.Reset();
    EXPECT_FALSE(c.IsInitialized());
    EXPECT_TRUE(c.IsValidLatitude(0.0));
    EXPECT_FALSE(c.IsInitialized());
}

TEST(RecordFrame, SetDefaultCreatesTheBlockAndLeavesTheCurrentSlot)
{
    Coordinate c;
    c.SetDefaultLatitude(12.0);
    EXPECT_TRUE(c.IsInitialized());
    EXPECT_EQ(12.0, c.GetDefaultLatitude());
    EXPECT_EQ(0.0, c.GetLatitude());
    EXPECT_FALSE(c.IsLatitudeSet());
    Area a;
    EXPECT_TRUE(a.GetDefaultName().isNull());
    EXPECT_TRUE(a.IsInitialized());
}

// --- Set with and without validation -------------------------------------------------

TEST(RecordFrame, OutOfRangeValueIsStoredWithValidationOff)
{
    Coordinate c;
    c.SetValidate(false);
    c.SetLatitude(1000.0);
    EXPECT_EQ(1000.0, c.GetLatitude());
    EXPECT_TRUE(c.IsLatitudeSet());
    EXPECT_FALSE(c.IsValidLatitude(1000.0));
}

TEST(RecordFrame, OutOfRangeValueThrowsWithValidationOn)
{
    Coordinate c;
    c.SetLatitude(45.5);
    EXPECT_TRUE(throwsWith<OutOfRangeException>(
        [&] { c.SetLatitude(1000.0); },
        QStringLiteral("Parameters for m_latitude are not set within range (-90, 90) in 'Coordinate'.")));
    EXPECT_EQ(45.5, c.GetLatitude());
    EXPECT_TRUE(c.IsLatitudeSet());

    Coordinate fresh;
    EXPECT_TRUE(throwsWith<OutOfRangeException>(
        [&] { fresh.SetLatitude(-90.000001); },
        QStringLiteral("Parameters for m_latitude are not set within range (-90, 90) in 'Coordinate'.")));
    EXPECT_FALSE(fresh.IsLatitudeSet());
    EXPECT_EQ(0.0, fresh.GetLatitude());
    EXPECT_FALSE(fresh.AnyData());
}

TEST(RecordFrame, LongitudeBoundsAreAcceptedAndNaNIsRefused)
{
    Coordinate c;
    ASSERT_TRUE(c.GetValidate());
    c.SetLongitude(180.0);
    EXPECT_EQ(180.0, c.GetLongitude());
    c.SetLongitude(-180.0);
    EXPECT_EQ(-180.0, c.GetLongitude());
    EXPECT_TRUE(throwsWith<OutOfRangeException>(
        [&] { c.SetLongitude(NaN); },
        QStringLiteral("Parameters for m_longitude are not set within range (-180, 180) in 'Coordinate'.")));
    EXPECT_EQ(-180.0, c.GetLongitude());
    EXPECT_TRUE(throwsWith<OutOfRangeException>(
        [&] { c.SetLongitude(180.0000001); },
        QStringLiteral("Parameters for m_longitude are not set within range (-180, 180) in 'Coordinate'.")));
    EXPECT_FALSE(c.IsValidLongitude(NaN));
    EXPECT_FALSE(c.IsValidLongitude(std::numeric_limits<double>::infinity()));
    EXPECT_TRUE(c.IsValidLongitude(-180.0));
}

TEST(RecordFrame, IsValidDoesNotDependOnTheFlag)
{
    Coordinate on;
    Coordinate off;
    off.SetValidate(false);
    for (double v : {-91.0, -90.0, 0.0, 90.0, 91.0, NaN}) {
        EXPECT_EQ(on.IsValidLatitude(v), off.IsValidLatitude(v)) << v;
        EXPECT_EQ(v >= -90.0 && v <= 90.0, on.IsValidLatitude(v)) << v;
    }
}

TEST(RecordFrame, NullStringIsRefusedWithValidationOnAndStoredWithValidationOff)
{
    Area a;
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { a.SetName(QString()); },
                                                QStringLiteral("Area: Please set Name properly.")));
    EXPECT_FALSE(a.IsNameSet());
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { a.SetScriptID(QString()); },
                                                QStringLiteral("Area: Please set ScriptID properly.")));
    a.SetName(QLatin1String(""));
    EXPECT_TRUE(a.IsNameSet());
    EXPECT_FALSE(a.GetName().isNull());
    EXPECT_TRUE(a.IsValidName(QLatin1String("")));
    EXPECT_FALSE(a.IsValidName(QString()));

    Area off;
    off.SetValidate(false);
    off.SetName(QString());
    EXPECT_TRUE(off.IsNameSet());
    EXPECT_TRUE(off.GetName().isNull());
    // Set, but not filled.
    EXPECT_FALSE(off.AnyData());
}

// --- defaults and reset ----------------------------------------------------------------

TEST(RecordFrame, ResetMemberFallsBackToTheDefaultAndResetToDefaultSetsIt)
{
    Coordinate c;
    c.SetLongitude(3.0);
    c.SetDefaultLongitude(10.0);
    EXPECT_EQ(3.0, c.GetLongitude());
    c.ResetLongitude();
    EXPECT_EQ(10.0, c.GetLongitude());
    EXPECT_FALSE(c.IsLongitudeSet());
    c.ResetToDefault();
    EXPECT_EQ(10.0, c.GetLongitude());
    EXPECT_TRUE(c.IsLongitudeSet());
    // Latitude has no default bit: it stays unset.
    EXPECT_FALSE(c.IsLatitudeSet());
}

TEST(RecordFrame, StringResetLosesTheDefaultResetToDefaultBringsItBack)
{
    Area a;
    a.SetDefaultName(QStringLiteral("default name"));
    a.SetName(QStringLiteral("current name"));
    a.ResetName();
    EXPECT_TRUE(a.GetName().isNull());
    EXPECT_FALSE(a.IsNameSet());
    EXPECT_EQ(QStringLiteral("default name"), a.GetDefaultName());
    a.ResetToDefault();
    EXPECT_EQ(QStringLiteral("default name"), a.GetName());
    EXPECT_TRUE(a.IsNameSet());
}

TEST(RecordFrame, InvalidDefaultIsAcceptedAndSkippedByResetToDefault)
{
    Coordinate c;
    c.SetDefaultLongitude(500.0);
    EXPECT_EQ(500.0, c.GetDefaultLongitude());
    c.ResetToDefault();
    EXPECT_FALSE(c.IsLongitudeSet());

    Coordinate off;
    off.SetValidate(false);
    off.SetDefaultLatitude(-500.0);
    off.ResetToDefault();
    EXPECT_FALSE(off.IsLatitudeSet());
}

TEST(RecordFrame, ResetClearsEveryBitAndKeepsDefaults)
{
    Area a = samples::area(QStringLiteral("x"), {{1.0, 2.0}}, QStringLiteral("s"));
    a.SetDefaultScriptID(QStringLiteral("script"));
    a.Reset();
    EXPECT_TRUE(a.IsInitialized());
    EXPECT_FALSE(a.IsNameSet());
    EXPECT_FALSE(a.IsCoordinateSet());
    EXPECT_FALSE(a.IsScriptIDSet());
    EXPECT_TRUE(a.GetName().isNull());
    EXPECT_TRUE(a.GetScriptID().isNull());
    EXPECT_TRUE(static_cast<const Area &>(a).GetCoordinate().isEmpty());
    EXPECT_FALSE(a.AnyData());
    EXPECT_EQ(QStringLiteral("script"), a.GetDefaultScriptID());
    a.ResetToDefault();
    EXPECT_EQ(QStringLiteral("script"), a.GetScriptID());
    EXPECT_TRUE(a.IsScriptIDSet());
    EXPECT_FALSE(a.IsNameSet());
}

TEST(RecordFrame, ResetToDefaultReachesNestedElementsButLeavesVectorsEmpty)
{
    Targetareas t = samples::targetareas();
    t.ResetToDefault();
    EXPECT_FALSE(t.IsAreaSet());
    EXPECT_TRUE(static_cast<const Targetareas &>(t).GetArea().isEmpty());
}

// --- completeness ----------------------------------------------------------------------

TEST(RecordFrame, CoordinateHasDataNeedsBothAnyDataOne)
{
    Coordinate c;
    c.SetLatitude(1.0);
    EXPECT_FALSE(c.HasData());
    EXPECT_TRUE(c.AnyData());
    c.SetLongitude(2.0);
    EXPECT_TRUE(c.HasData());
}

TEST(RecordFrame, AreaWithOnlyAScriptIdHasAnyDataButNoData)
{
    Area a;
    a.SetScriptID(QStringLiteral("only"));
    EXPECT_TRUE(a.AnyData());
    EXPECT_FALSE(a.HasData());
    a.SetName(QStringLiteral("n"));
    EXPECT_FALSE(a.HasData());
    a.AppendCoordinate(samples::coordinate(1.0, 1.0));
    EXPECT_TRUE(a.HasData());
    a.ResetScriptID();
    EXPECT_TRUE(a.HasData());
}

TEST(RecordFrame, MutableVectorGetterSetsThePresenceBit)
{
    Area a;
    a.GetCoordinate();
    EXPECT_TRUE(a.IsCoordinateSet());
    EXPECT_TRUE(static_cast<const Area &>(a).GetCoordinate().isEmpty());
    EXPECT_FALSE(a.HasData());
    a.SetName(QStringLiteral("n"));
    EXPECT_NO_THROW(a.Check());

    // The const getter only looks.
    Area b;
    static_cast<const Area &>(b).GetCoordinate();
    EXPECT_FALSE(b.IsCoordinateSet());
}

TEST(RecordFrame, TargetareasHasDataAndAnyDataAreTheSame)
{
    Targetareas t;
    EXPECT_FALSE(t.HasData());
    EXPECT_FALSE(t.AnyData());
    t.GetArea();
    EXPECT_FALSE(t.HasData());
    EXPECT_FALSE(t.AnyData());
    t.AppendArea(samples::area(QStringLiteral("a"), {{0.0, 0.0}}));
    EXPECT_TRUE(t.HasData());
    EXPECT_TRUE(t.AnyData());
}

// --- Check ------------------------------------------------------------------------------

TEST(RecordFrame, CoordinateCheckTestsLongitudeFirst)
{
    Coordinate c;
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { c.Check(); },
                                                QStringLiteral("Coordinate: Please set Longitude properly.")));
    c.SetLatitude(1.0);
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { c.Check(); },
                                                QStringLiteral("Coordinate: Please set Longitude properly.")));
    c.ResetLatitude();
    c.SetLongitude(1.0);
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { c.Check(true); },
                                                QStringLiteral("Coordinate: Please set Latitude properly.")));
    c.SetLatitude(2.0);
    EXPECT_NO_THROW(c.Check());
    EXPECT_NO_THROW(c.Check(true));
}

TEST(RecordFrame, CheckRefusesAStoredOutOfRangeValueWhateverTheFlag)
{
    Coordinate c;
    c.SetValidate(false);
    c.SetLongitude(1.0);
    c.SetLatitude(95.0);
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { c.Check(); },
                                                QStringLiteral("Coordinate: Please set Latitude properly.")));
    c.SetValidate(true);
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { c.Check(); },
                                                QStringLiteral("Coordinate: Please set Latitude properly.")));
}

TEST(RecordFrame, AreaCheckOrder)
{
    Area a;
    a.SetValidate(false);
    a.SetScriptID(QString());
    a.AppendCoordinate(Coordinate());
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { a.Check(); }, QStringLiteral("Area: Please set Name properly.")));
    a.SetName(QStringLiteral("n"));
    // Then each element ...
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { a.Check(); },
                                                QStringLiteral("Coordinate: Please set Longitude properly.")));
    a.GetCoordinate()[0].SetLongitude(1.0);
    a.GetCoordinate()[0].SetLatitude(1.0);
    // ... then the optional ScriptID, set but null.
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { a.Check(); },
                                                QStringLiteral("Area: Please set ScriptID properly.")));
    a.ResetScriptID();
    EXPECT_NO_THROW(a.Check());

    Area noCorners;
    noCorners.SetName(QStringLiteral("n"));
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { noCorners.Check(); },
                                                QStringLiteral("Area: Please set Coordinate properly.")));
}

TEST(RecordFrame, TargetareasCheckReachesEveryElement)
{
    Targetareas t;
    t.SetValidate(false);
    t.AppendArea(samples::area(QStringLiteral("a"), {{1.0, 1.0}}));
    Area bad;
    bad.SetName(QStringLiteral("b"));
    t.AppendArea(bad);
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { t.Check(); },
                                                QStringLiteral("Area: Please set Coordinate properly.")));
}

// --- repeated members ---------------------------------------------------------------------

TEST(RecordFrame, AppendOfAnIncompleteItemWithValidationOffGrowsTheVector)
{
    Area a;
    a.SetValidate(false);
    Coordinate half;
    half.SetValidate(false);
    half.SetLongitude(5.0);
    a.AppendCoordinate(half);
    a.AppendCoordinate(Coordinate());
    ASSERT_EQ(2, static_cast<const Area &>(a).GetCoordinate().size());
    EXPECT_TRUE(a.IsCoordinateSet());
    EXPECT_EQ(5.0, static_cast<const Area &>(a).GetCoordinate().at(0).GetLongitude());
    EXPECT_FALSE(static_cast<const Area &>(a).GetCoordinate().at(1).AnyData());
}

TEST(RecordFrame, SetOfAVectorStoresItWithoutTests)
{
    Area a;
    QVector<Coordinate> corners;
    corners.append(Coordinate());
    corners.append(samples::coordinate(1.0, 2.0));
    a.SetCoordinate(corners);
    EXPECT_TRUE(a.IsCoordinateSet());
    EXPECT_EQ(2, static_cast<const Area &>(a).GetCoordinate().size());
    EXPECT_TRUE(a.IsValidCoordinate(Coordinate()));
    EXPECT_TRUE(a.IsValidCoordinate(corners));
    a.ResetCoordinate();
    EXPECT_FALSE(a.IsCoordinateSet());
    EXPECT_TRUE(static_cast<const Area &>(a).GetCoordinate().isEmpty());
}

TEST(RecordFrame, SetValidateReachesEveryElement)
{
    Targetareas t = samples::targetareas();
    t.SetValidate(false);
    const Targetareas &view = t;
    for (const Area &area : view.GetArea()) {
        EXPECT_FALSE(area.GetValidate());
        for (const Coordinate &c : area.GetCoordinate())
            EXPECT_FALSE(c.GetValidate());
    }
    // Check pushes the root's flag down as well.
    t.SetValidate(true);
    t.GetArea()[0].SetValidate(false);
    t.Check();
    EXPECT_TRUE(view.GetArea().at(0).GetValidate());
}

// --- equality ------------------------------------------------------------------------------

TEST(RecordFrame, UnsetRecordsWithDifferentDefaultsAreEqual)
{
    Coordinate a;
    Coordinate b;
    a.SetDefaultLongitude(1.0);
    b.SetDefaultLongitude(2.0);
    b.SetDefaultLatitude(3.0);
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a != b);
    Coordinate fresh;
    EXPECT_TRUE(a == fresh);
    EXPECT_TRUE(fresh == a);
    EXPECT_FALSE(fresh.IsInitialized());
    EXPECT_TRUE(Coordinate() == Coordinate());
}

TEST(RecordFrame, EqualityComparesSetMembersExactly)
{
    EXPECT_EQ(samples::coordinate(1.0, 2.0), samples::coordinate(1.0, 2.0));
    EXPECT_NE(samples::coordinate(1.0, 2.0), samples::coordinate(1.0, 2.0000000001));
    Coordinate half;
    half.SetLongitude(1.0);
    EXPECT_NE(samples::coordinate(1.0, 2.0), half);
    EXPECT_NE(half, Coordinate());
    // Unset current slots are not compared.
    Coordinate a;
    Coordinate b;
    a.SetDefaultLatitude(7.0);
    a.ResetLatitude();
    a.SetLongitude(1.0);
    b.SetLongitude(1.0);
    EXPECT_NE(a.GetLatitude(), b.GetLatitude());
    EXPECT_EQ(a, b);
    // Flag and logger do not count.
    b.SetValidate(false);
    b.SetLogger(std::make_shared<ORBELIN::Logger>());
    EXPECT_EQ(a, b);
}

TEST(RecordFrame, EqualityOfRepeatedMembersIgnoresThePresenceBit)
{
    Area a;
    Area b;
    b.GetCoordinate();
    EXPECT_TRUE(b.IsCoordinateSet());
    EXPECT_EQ(a, b);
    a.AppendCoordinate(samples::coordinate(1.0, 1.0));
    EXPECT_NE(a, b);
    b.AppendCoordinate(samples::coordinate(1.0, 1.0));
    EXPECT_EQ(a, b);
    b.GetCoordinate()[0].SetLatitude(1.5);
    EXPECT_NE(a, b);
    EXPECT_EQ(samples::targetareas(), samples::targetareas());
    EXPECT_NE(samples::targetareas(), samples::otherTargetareas());
}

// --- copying --------------------------------------------------------------------------------

TEST(RecordFrame, AssignmentThenSetLeavesTheOtherSideUnchanged)
{
    Coordinate a = samples::coordinate(1.0, 2.0);
    Coordinate b;
    b = a;
    EXPECT_EQ(a, b);
    b.SetLongitude(3.0);
    EXPECT_EQ(1.0, a.GetLongitude());
    EXPECT_EQ(3.0, b.GetLongitude());
    a.SetLatitude(4.0);
    EXPECT_EQ(2.0, b.GetLatitude());
    a.ResetLongitude();
    EXPECT_TRUE(b.IsLongitudeSet());

    Coordinate c;
    c = a;
    c = c;
    c.SetDefaultLongitude(9.0);
    EXPECT_EQ(0.0, a.GetDefaultLongitude());
}

TEST(RecordFrame, CopyThenSetLeavesTheOtherSideUnchanged)
{
    Area original = samples::area(QStringLiteral("orig"), {{1.0, 1.0}}, QStringLiteral("s"));
    Area copy(original);
    EXPECT_EQ(original, copy);
    copy.SetName(QStringLiteral("copy"));
    copy.ResetScriptID();
    copy.AppendCoordinate(samples::coordinate(2.0, 2.0));
    EXPECT_EQ(QStringLiteral("orig"), original.GetName());
    EXPECT_TRUE(original.IsScriptIDSet());
    EXPECT_EQ(1, static_cast<const Area &>(original).GetCoordinate().size());
    original.SetName(QStringLiteral("changed"));
    EXPECT_EQ(QStringLiteral("copy"), copy.GetName());
}

TEST(RecordFrame, CopiesOfATreeAreIndependentDownToTheLeaves)
{
    const Targetareas original = samples::targetareas();
    Targetareas copy(original);
    copy.GetArea()[0].GetCoordinate()[1].SetLongitude(-1.0);
    copy.GetArea()[2].SetName(QStringLiteral("renamed"));
    EXPECT_EQ(samples::targetareas(), original);
    EXPECT_EQ(16.58, original.GetArea().at(0).GetCoordinate().at(1).GetLongitude());
    EXPECT_EQ(-1.0, static_cast<const Targetareas &>(copy).GetArea().at(0).GetCoordinate().at(1).GetLongitude());

    Targetareas assigned;
    assigned = original;
    assigned.GetArea()[1].GetCoordinate()[0].SetLatitude(0.5);
    assigned.GetArea().removeLast();
    EXPECT_EQ(samples::targetareas(), original);
    EXPECT_EQ(2, static_cast<const Targetareas &>(assigned).GetArea().size());

    // A nested element fetched for reading from a copy, then changed in the
    // original, keeps what it held.
    Targetareas source = samples::targetareas();
    const Area element = static_cast<const Targetareas &>(source).GetArea().at(0);
    source.GetArea()[0].SetName(QStringLiteral("other"));
    EXPECT_EQ(QString::fromUtf8("Wien \xe2\x80\x93 S\xc3\xbc\x64"), element.GetName());
}

TEST(RecordFrame, CopyTakesTheFlagButNotTheLoggerAssignmentNeither)
{
    auto logger = std::make_shared<ORBELIN::Logger>();
    Targetareas source = samples::targetareas();
    source.SetValidate(false);
    source.SetLogger(logger);

    Targetareas copy(source);
    EXPECT_FALSE(copy.GetValidate());
    EXPECT_EQ(nullptr, copy.GetLogger());
    for (const Area &area : static_cast<const Targetareas &>(copy).GetArea())
        EXPECT_FALSE(area.GetValidate());

    Targetareas assigned;
    assigned = source;
    EXPECT_TRUE(assigned.GetValidate());
    EXPECT_EQ(nullptr, assigned.GetLogger());
    EXPECT_EQ(QStringLiteral("Targetareas"), assigned.GetObjectName());
    EXPECT_EQ(source, assigned);
}

TEST(RecordFrame, DefaultsTravelWithCopies)
{
    Coordinate a;
    a.SetDefaultLongitude(10.0);
    Coordinate b(a);
    EXPECT_EQ(10.0, b.GetDefaultLongitude());
    b.SetDefaultLongitude(20.0);
    EXPECT_EQ(10.0, a.GetDefaultLongitude());
    b.ResetToDefault();
    EXPECT_EQ(20.0, b.GetLongitude());
    EXPECT_FALSE(a.IsLongitudeSet());
}
