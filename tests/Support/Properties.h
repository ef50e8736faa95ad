#pragma once

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace pacelet::testing {

/// Checks a RapidCheck property over as many `cases` within a running test.
template<typename Property>
void checkProperty(int cases, Property&& property) {
    rc::detail::TestParams parameters = rc::detail::configuration().testParams;
    parameters.maxSuccess = cases;
    parameters.maxSize = 12;
    const rc::detail::TestResult result = rc::detail::checkTestable(
        std::forward<Property>(property), rc::detail::TestMetadata{}, parameters);
    std::ostringstream report;
    rc::detail::printResultMessage(result, report);
    EXPECT_TRUE(result.is<rc::detail::SuccessResult>()) << report.str();
}

/// Text out of `pieces`, none, one or several of them in a row.
inline rc::Gen<std::string> textOf(std::vector<std::string> pieces) {
    return rc::gen::map(
        rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(std::move(pieces))),
        [](const std::vector<std::string>& chosen) {
            std::string text;
            for (const std::string& piece : chosen) {
                text += piece;
            }
            return text;
        });
}

} // namespace pacelet::testing
