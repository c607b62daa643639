#include "PropertyRows.h"

#include <gtest/gtest.h>

namespace genvara {
namespace {

TEST(PropertyRows, ShowFiguresInTheUsersSeparatorAndTextsAsTheyStand) {
    const EntryNumbers comma({.decimal = ",", .grouping = "."});
    const struct {
        const char* row;
        const char* label;
        const char* value;
    } rows[] = {
        {"Running kW\t12.500", "Running kW", "12,500"},
        {"Start/Run Amps\t60.5/11.0", "Start/Run Amps", "60,5/11,0"},
        {"Qty\t3", "Qty", "3"},
        {"Loading\t90%", "Loading", "90%"},
        {"BTU/hr\t1.5E+16", "BTU/hr", "1,5E+16"},
        {"Battery Volts\t-24.5", "Battery Volts", "-24,5"},
        {"Name\t1.5", "Name", "1.5"},
        {"Description\t2.0", "Description", "2.0"},
        {"Name\tPump\t2.5", "Name", "Pump\t2.5"},
        {"Starting Method\t80% Tapped Autotransformer", "Starting Method", "80% Tapped Autotransformer"},
        {"Error\tOverflow.", "Error", "Overflow."},
        {"Alone", "Alone", ""}};
    for (const auto& row : rows) {
        const ShownProperty shown = ShowProperty(row.row, comma);
        EXPECT_EQ(shown.label, row.label);
        EXPECT_EQ(shown.value, row.value);
        const ShownProperty plain = ShowProperty(row.row, EntryNumbers(NumberSigns{}));
        const std::string whole = plain.label + '\t' + plain.value;
        EXPECT_EQ(whole.substr(0, std::string(row.row).size()), row.row) << "a point stays a point";
    }
}

}  // namespace
}  // namespace genvara
