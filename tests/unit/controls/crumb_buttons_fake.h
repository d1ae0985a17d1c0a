// A tool bar's button row in memory, for the breadcrumb row's tests and the add-music model's.
#pragma once

#include <string>
#include <vector>

#include "controls/breadcrumb_row.h"

struct FakeCrumbButtons : IKxCrumbButtons {
    struct Button { UINT command; std::wstring text; BYTE style; void* data; };
    std::vector<Button> buttons;

    int ButtonCount() override { return int(buttons.size()); }
    void DeleteButton(int index) override { buttons.erase(buttons.begin() + index); }
    bool AddStartButton() override {
        buttons.push_back({kKxCrumbFirstCommand, L"", kKxStartButtonStyle, nullptr});
        return true;
    }
    bool AddButtons(const std::vector<UINT>& commands) override {
        for (UINT c : commands) buttons.push_back({c, L"", 0, nullptr});
        return true;
    }
    void SetButtonText(UINT command, LPCWSTR text, BYTE style) override {
        const int i = CommandToIndex(command);
        if (i >= 0) buttons[i].text = text, buttons[i].style = style;
    }
    int CommandToIndex(UINT command) override {
        for (size_t i = 0; i < buttons.size(); ++i)
            if (buttons[i].command == command) return int(i);
        return -1;
    }
    void AutoSize() override {}

    // "5000| 5001:Music~ 5002:Albums" (~ marks a crumb without its arrow).
    std::string Row() const {
        std::string row;
        for (const Button& b : buttons) {
            if (!row.empty()) row += ' ';
            row += std::to_string(b.command) + (b.style == kKxStartButtonStyle ? "|" : ":") +
                   std::string(b.text.begin(), b.text.end()) + (b.style == kKxCrumbStyleNoDropDown ? "~" : "");
        }
        return row;
    }
};
