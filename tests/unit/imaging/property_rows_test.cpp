// The image dialog's rows, read from the in-memory library through its property object: a
// picture with every key, each in its row and format, and an item without any.
#include "imaging/image_property_rows.h"
#include "tests/unit/host/library_test_support.h"
#include "tests/unit/imaging/property_text_source_fake.h"

namespace kxtest {
namespace {

using kxhost::ItemId;
using kxhost::PropertyValue;

struct PropertyRows : LibraryTest {
    FakePropertyTexts texts;
    void SetUp() override {
        LibraryTest::SetUp();
        OpenProperties(sample.pictures[0]);
    }
};

TEST_F(PropertyRows, PictureWithEveryKeyShowsTwentyFourRowsInTableOrder) {
    const ItemId id = sample.pictures[0];
    lib.SetValue(id, KxPropImage12, PropertyValue::String(L"Harbour at dawn"));
    lib.SetValue(id, KxPropImage13, PropertyValue::String(L"A. Painter"));
    lib.SetValue(id, KxPropLocation, PropertyValue::String(L"D:\\Pictures"));
    lib.SetValue(id, KxPropFileSize, PropertyValue::Size(2400016));
    lib.SetValue(id, KxPropImage11, PropertyValue::String(L"2024:05:01 10:20:30"));
    lib.SetValue(id, KxPropImage1, PropertyValue::String(L"Maker"));
    lib.SetValue(id, KxPropImage2, PropertyValue::String(L"Model X"));
    lib.SetValue(id, KxPropImage3, PropertyValue::Rational(1, 250));
    lib.SetValue(id, KxPropImage4, PropertyValue::Float(2.8f));
    lib.SetValue(id, KxPropImage5, PropertyValue::Rational(50, 1));
    lib.SetValue(id, KxPropImage6, PropertyValue::Rational(47, 10));
    lib.SetValue(id, KxPropImage7, PropertyValue::Int(1));
    lib.SetValue(id, KxPropImage8, PropertyValue::Int(6));
    lib.SetValue(id, KxPropImage9, PropertyValue::Int(72));
    lib.SetValue(id, KxPropImage10, PropertyValue::Int(96));
    lib.SetValue(id, KxPropImage14, PropertyValue::Int(5));
    lib.SetValue(id, KxPropImage15, PropertyValue::Int(2));
    lib.SetValue(id, KxPropImage16, PropertyValue::Int(75));
    lib.SetValue(id, KxPropImage17, PropertyValue::Rational(5, 2));
    lib.SetValue(id, KxPropImage18, PropertyValue::Int(65535));

    KxImagePropertyTexts fields;
    fields.field[KxImageFieldWidth] = KxFormatPixelsText(300, texts);  // what the turned preview gives
    fields.field[KxImageFieldHeight] = KxFormatPixelsText(400, texts);
    LONG orientation = 0;
    ASSERT_EQ(S_OK, KxReadImagePropertyTexts(props.p, P(id), texts, fields, &orientation));
    EXPECT_EQ(6, orientation);
    KxPropertyRows rows;
    KxBuildImageRows(fields, texts, rows);

    const struct {
        LPCWSTR label, value;  // null: a spacer
    } expected[KX_IMAGE_ROW_COUNT] = {
        {L"[128]", L": 300[161]"},  {L"[129]", L": 400[161]"},  {L"[122]", L": Harbour at dawn"},
        {L"[123]", L": A. Painter"}, {nullptr, nullptr},         {L"[59]", L": D:\\Pictures"},
        {L"[8]", L": 2.28 MB"},     {L"[119]", L": 2024:05:01 10:20:30"}, {nullptr, nullptr},
        {L"[110]", L": Maker"},     {L"[135]", L": Model X"},   {nullptr, nullptr},
        {L"[111]", L": 1/250[162]"}, {L"[112]", L": f/2.8"},     {L"[113]", L": 50.00[157]"},
        {L"[114]", L": 4.7[158]"},  {L"[115]", L": [137]"},     {L"[116]", L": [143]"},
        {L"[117]", L": 72[160]"},   {L"[118]", L": 96[160]"},   {L"[121]", L": [148]"},
        {L"[124]", L": 75[159]"},   {L"[125]", L": 2.5"},       {L"[126]", L": [156]"},
    };
    ASSERT_EQ(static_cast<size_t>(KX_IMAGE_ROW_COUNT), rows.size());
    for (int row = 0; row < KX_IMAGE_ROW_COUNT; ++row) {
        if (!expected[row].label) {
            EXPECT_EQ(nullptr, rows[row]) << "row " << row;
            continue;
        }
        EXPECT_STREQ(expected[row].label, KxPropertyRowText(rows, row, 0)) << "row " << row;
        EXPECT_STREQ(expected[row].value, KxPropertyRowText(rows, row, 1)) << "row " << row;
    }
}

// (Its rows of dashes and empty spacers are read back from the dialog under Wine.)
TEST_F(PropertyRows, ItemWithoutPropertiesReadsFalseWithoutAnOrientation) {
    const ItemId bare = lib.AddItem(kxhost::ItemKind::Picture, L"Bare");
    KxImagePropertyTexts fields;
    LONG orientation = 0;
    EXPECT_EQ(S_FALSE, KxReadImagePropertyTexts(props.p, P(bare), texts, fields, &orientation));
    EXPECT_EQ(-1, orientation);
    KxPropertyRows rows;
    KxBuildImageRows(fields, texts, rows);
    ASSERT_EQ(static_cast<size_t>(KX_IMAGE_ROW_COUNT), rows.size());
    // requests outside the rows or the two columns are left untouched
    const struct { int row, column; } outside[] = {{-1, 0}, {KX_IMAGE_ROW_COUNT, 1}, {0, 2}, {0, -1}};
    for (const auto& c : outside)
        EXPECT_EQ(nullptr, KxPropertyRowText(rows, c.row, c.column)) << c.row << "," << c.column;
}

}  // namespace
}  // namespace kxtest
