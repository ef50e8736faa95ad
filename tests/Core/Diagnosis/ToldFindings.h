#pragma once

#include "Core/Diagnosis/Finding.h"
#include "tests/Support/Table.h"

#include <gtest/gtest.h>

namespace pacelet::testing {

/// A finding as a row: id, severity, headline, detail, fix and note.
using Told = std::array<std::string, 6>;

inline std::vector<Told> told(const std::vector<Finding>& findings) {
    std::vector<Told> list;
    for (const Finding& each : findings) {
        const std::string fix{each.primaryFix() ? rawValue(*each.primaryFix()) : ""};
        list.push_back({each.id(), std::string{rawValue(each.severity())}, each.headline(),
                        each.detail(), fix, each.leaveNote().value_or("")});
    }
    return list;
}

/// The ids of all findings, in order.
inline std::string ids(const std::vector<Finding>& findings) {
    std::string text;
    for (const Finding& each : findings) {
        text += (text.empty() ? "" : " ") + each.id();
    }
    return text;
}

/// Compares with the rows of that name among the findings in the tables.
inline void expectTold(const std::string& name, const std::vector<Finding>& findings) {
    EXPECT_EQ(told(findings), rows<6>("Findings", name)) << name;
}

} // namespace pacelet::testing
