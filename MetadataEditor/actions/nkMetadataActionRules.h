#pragma once

#include "actions/nkMetadataActionId.h"

#include <vector>

struct nkMetadataActionInputs;

/// The rules that enable actions and sub-menus, as data: pure functions of the inputs.
namespace nkMetadataActionRules {

using Rule = bool (*)(const nkMetadataActionInputs &);

struct ActionRule
{
    nkMetadataAction::Id id;
    Rule isEnabled;
};

struct MenuRule
{
    nkMetadataAction::Menu menu;
    Rule isEnabled;
};

/// An action without a rule keeps its state.
const std::vector<ActionRule> &actionRules();
/// "Create Entry" has none here: its rule depends on the selection itself.
const std::vector<MenuRule> &menuRules();

} // namespace nkMetadataActionRules
