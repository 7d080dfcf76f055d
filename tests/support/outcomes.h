// What a call does beside giving a result: the error it raises, the assertions it reports.
#pragma once

#include <drawing/runtime.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

/// The code of the OdError that the call raises, eOk when it raises none.
template <class Call>
OdResult raisedBy(Call&& call) {
    try {
        call();
    } catch (const OdError& error) {
        return error.code();
    }
    return eOk;
}

/// The lines that the call writes to the standard error stream, where the runtime's assertions go.
template <class Call>
std::vector<std::string> errorLinesOf(Call&& call) {
    testing::internal::CaptureStderr();
    call();
    std::istringstream text(testing::internal::GetCapturedStderr());
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    return lines;
}
