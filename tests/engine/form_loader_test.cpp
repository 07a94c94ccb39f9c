// Our form files: the shipped forms load and read the program's columns; broken forms
// say where they are broken.

#include "engine/engine_error.h"
#include "engine/form.h"

#include "support/engine_job.h"

#include <QFile>
#include <gtest/gtest.h>

using engine::Form;

namespace {

struct ShippedForm {
    const char* file;
    double width, height;
    int columns, rows;  // label cells; 0 for a list
};

class ShippedForms : public ::testing::TestWithParam<ShippedForm> {};

TEST_P(ShippedForms, LoadWithTheirPaperAndCells)
{
    const ShippedForm& p = GetParam();
    const Form f = engine::loadForm(sealtest::formPath(QString::fromUtf8(p.file)));
    EXPECT_DOUBLE_EQ(f.paper.width(), p.width);
    EXPECT_DOUBLE_EQ(f.paper.height(), p.height);
    if (p.columns > 0) {
        ASSERT_TRUE(f.cells.has_value());
        EXPECT_EQ(f.cells->columns, p.columns);
        EXPECT_EQ(f.cells->rows, p.rows);
        // Every cell lies on the paper.
        for (int i = 0; i < f.cells->perPage(); ++i)
            EXPECT_TRUE(QRectF(QPointF(0, 0), f.paper).contains(f.cells->cell(i))) << i;
    } else {
        EXPECT_TRUE(f.list.has_value());
    }
}

// The label and envelope forms read only titles of the label CSV, and a file without
// titles can bind by the form's column order.
TEST_P(ShippedForms, ReadOnlyColumnsTheProgramWrites)
{
    const ShippedForm& p = GetParam();
    const Form f = engine::loadForm(sealtest::formPath(QString::fromUtf8(p.file)));
    QStringList known = sealtest::kLedgerColumns;
    if (p.columns > 0) known = sealtest::kLabelTitle.split(u',').replaceInStrings(QStringLiteral(" "), QString());
    for (const QString& c : f.boundColumns()) EXPECT_TRUE(known.contains(c.trimmed())) << c.toStdString();
    QStringList order;
    for (const QString& c : f.columns) order.append(c.trimmed());
    EXPECT_EQ(order, known);
}

INSTANTIATE_TEST_SUITE_P(Forms, ShippedForms,
                         ::testing::Values(ShippedForm{"シール.wfd", 210, 297, 2, 5},
                                           ShippedForm{"シール_2X6.wfd", 210, 297, 2, 6},
                                           ShippedForm{"ビーコン用シール30M.wfd", 210, 297, 3, 10},
                                           ShippedForm{"封筒印刷長3.wfd", 120, 235, 1, 1},
                                           ShippedForm{"封筒印刷角2_2.wfd", 240, 332, 1, 1},
                                           ShippedForm{"封筒印刷長3_横.wfd", 235, 120, 1, 1},
                                           ShippedForm{"封筒印刷長3_横窓.wfd", 235, 120, 1, 1},
                                           ShippedForm{"同意台帳_TKZK.wfd", 297, 210, 0, 0}),
                         ([](const auto& info) {
                             return std::vector<std::string>{"Seal2x5", "Seal2x6",     "Beacon30",    "Naga3",
                                                             "Kaku2",   "Naga3Across", "Naga3Window", "ConsentLedger"}
                                 .at(info.index);
                         }));

// On 長形3号 the postal boxes are printed: 12 mm from the top, 8 mm from the right edge,
// 5.7 x 8 mm, 1.3 mm apart, 1.9 mm between the third and the fourth, 1.1 mm after.
TEST(PostalBoxes, Naga3BoxesStandWhereTheEnvelopeHasThem)
{
    const Form f = engine::loadForm(sealtest::formPath("封筒印刷長3.wfd"));
    const engine::Field* postal = nullptr;
    for (const engine::Field& field : f.cellFields)
        if (field.type == engine::FieldType::Postal && field.columns == QStringList{"cYubinNo"}) postal = &field;
    ASSERT_NE(postal, nullptr);
    ASSERT_EQ(postal->boxes.size(), 7);
    const double expectedLeft[7] = {64.3, 71.3, 78.3, 85.9, 92.7, 99.5, 106.3};
    for (int i = 0; i < 7; ++i) {
        const QRectF b = postal->boxes[i].translated(postal->rect.topLeft());
        EXPECT_NEAR(b.left(), expectedLeft[i], 1e-9) << i;
        EXPECT_NEAR(b.top(), 12.0, 1e-9);
        EXPECT_NEAR(b.width(), 5.7, 1e-9);
        EXPECT_NEAR(b.height(), 8.0, 1e-9);
    }
    EXPECT_NEAR(postal->boxes[6].translated(postal->rect.topLeft()).right(), 120.0 - 8.0, 1e-9);
}

TEST(FormParse, MinimalLabelForm)
{
    const Form f =
        engine::parseForm(R"({"format": "sealprint-form/1", "paper": {"size": "B5", "orientation": "landscape"},
        "cells": {"columns": 1, "rows": 2, "left": 5, "top": 5, "width": 100, "height": 50, "vgap": 3},
        "cellFields": [{"column": ["cAddress1", "nRoomNo"], "x": 1, "y": 1, "width": 10, "height": 5,
                        "when": {"column": "cMst", "equals": "1"}, "keepWith": "cKeisho"}]})",
                          "t.wfd");
    EXPECT_EQ(f.paper, QSizeF(257, 182));
    EXPECT_EQ(f.cells->cell(1), QRectF(5, 58, 100, 50));
    EXPECT_EQ(f.boundColumns(), (QStringList{"cAddress1", "nRoomNo", "cMst", "cKeisho"}));
}

struct BadForm {
    const char* name;
    const char* json;
    int line;
    const char* messagePart;
};
class FormFault : public ::testing::TestWithParam<BadForm> {};
TEST_P(FormFault, SaysWhatAndWhere)
{
    sealtest::expectEngineError([&] { engine::parseForm(QByteArray(GetParam().json), "bad.wfd"); }, "bad.wfd",
                                GetParam().line, {QString::fromUtf8(GetParam().messagePart)});
}
#define FORM_HEAD R"("format": "sealprint-form/1", "paper": {"size": "A4"}, )"
#define CELLS R"("cells": {"columns": 2, "rows": 5, "left": 0, "top": 0, "width": 100, "height": 50}, )"
INSTANTIATE_TEST_SUITE_P(
    Faults, FormFault,
    ::testing::Values(
        BadForm{"BrokenJson", "{\n\"format\": \"sealprint-form/1\",\n\"paper\": {\"size\": \"A4\"\n", 4, "JSON"},
        BadForm{"NotOurs", R"({"format": "wfd 10"})", 0, "format"},
        BadForm{"UnknownKey",
                "{" FORM_HEAD CELLS
                R"("cellFields": [{"column": "cName", "x": 0, "y": 0, "width": 5, "height": 5, "colour": "red"}]})",
                0, "colour"},
        BadForm{"NoCellsNorList", "{" FORM_HEAD R"("cellFields": []})", 0, "list"},
        BadForm{"NoSource",
                "{" FORM_HEAD CELLS R"("cellFields": [{"name": "n", "x": 0, "y": 0, "width": 5, "height": 5}]})", 0,
                "(n)"},
        BadForm{"SizeNotNumber",
                "{" FORM_HEAD CELLS R"("cellFields": [{"column": "a", "x": "0", "y": 0, "width": 5, "height": 5}]})", 0,
                "\"x\""},
        BadForm{"BadAlign",
                "{" FORM_HEAD CELLS
                R"("cellFields": [{"column": "a", "x": 0, "y": 0, "width": 5, "height": 5, "align": "middle"}]})",
                0, "align"},
        BadForm{"BadPaper", R"({"format": "sealprint-form/1", "paper": {"size": "Letter"}})", 0, "Letter"},
        BadForm{
            "BackOnSheet",
            "{" FORM_HEAD CELLS
            R"("cellFields": [{"column": "a", "x": 0, "y": 0, "width": 5, "height": 5}], "backFields": [{"column": "a", "x": 0, "y": 0, "width": 5, "height": 5}]})",
            0, "backFields"},
        BadForm{"BoxesOnText",
                "{" FORM_HEAD CELLS
                R"("cellFields": [{"column": "a", "x": 0, "y": 0, "width": 5, "height": 5, "boxes": {}}]})",
                0, "boxes"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(FormFile, MissingFormIsNamed)
{
    sealtest::expectEngineError([&] { engine::loadForm("/nonexistent/シール.wfd"); }, "/nonexistent/シール.wfd", -1);
}

TEST(JoinedForm, RoundTrips)
{
    engine::JoinedForm j;
    j.title = "まとめ";
    j.reports.append({"/sys/シール.wfd", {{"/tmp/a.csv", true}, {"/tmp/b.csv", false}}});
    const QByteArray json = engine::joinedFormJson(j);
    ASSERT_TRUE(engine::isJoinedForm(json));
    const engine::JoinedForm back = engine::parseJoinedForm(json, "tmp.wfd");
    EXPECT_EQ(back.title, "まとめ");
    ASSERT_EQ(back.reports.size(), 1);
    EXPECT_EQ(back.reports[0].form, "/sys/シール.wfd");
    EXPECT_EQ(back.reports[0].data[1].first, "/tmp/b.csv");
    EXPECT_FALSE(back.reports[0].data[1].second);
    EXPECT_FALSE(engine::isJoinedForm(R"({"format": "sealprint-form/1"})"));
}

}  // namespace
