#pragma once

#include "Core/Knowledge/CatalogEntry.h"
#include "Core/Platform/ProgramKnowledge.h"

#include <optional>
#include <string>
#include <string_view>

/// Explains what the catalog does not know by what the machine itself tells: texts by others,
/// tidied to the catalog's style, which tell where they come from.
namespace pacelet::LocalExplanation {

/// Nothing when the facts tell nothing of the process `name`. `appName` names the application that
/// it belongs to.
std::optional<Explanation> make(const ProgramFacts& facts, std::string_view name,
                                const std::optional<std::string>& appName);

/// A short text by others as one sentence: "shell, for people" as "Shell, for people.". The first
/// word keeps its letter when it is one of `names`, or not a plain word. Empty for nothing.
std::string sentence(std::string_view text, std::initializer_list<std::string_view> names = {});

/// The leading part of such a text as a title of few words; empty when it has none.
std::string shortTitle(std::string_view text, std::initializer_list<std::string_view> names = {});

} // namespace pacelet::LocalExplanation
