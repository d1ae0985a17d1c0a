// The message box's behaviour, written once and run two ways: against CDlgMassageBox linked into
// the test program, and through KxComResPlgin.dll's ShowMessageBox like a host.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "tests/win/common/dialog_driver.h"

namespace kxtest {

// Shows a message box on this thread and returns its result.
class MessageBoxShower {
public:
    virtual ~MessageBoxShower() = default;
    virtual HRESULT Show(HWND parent, LPCWSTR text, LPCWSTR caption, UINT flags) = 0;
    // The caption a null caption shows.
    virtual std::wstring DefaultCaption() = 0;
};

// Each program instantiates the cases once under its own prefix (the parameter is not used).
class MessageBoxCases : public ::testing::TestWithParam<int> {
protected:
    // Made by the program that includes the cases.
    static MessageBoxShower* MakeShower();

    void SetUp() override;
    void TearDown() override;
    HRESULT Show(LPCWSTR text, LPCWSTR caption, UINT flags, HWND parent = nullptr) {
        return shower->Show(parent, text, caption, flags);
    }

    MessageBoxShower* shower = nullptr;
    ResourceCounts before{};
};

}  // namespace kxtest
