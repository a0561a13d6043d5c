#pragma once

#include "host/control/RoadMapResults.h"

#include <QString>

#include <span>

/// The two ways of searching the road map, in the order of the choice.
enum class SearchRule : int
{
    AddressKey = 0,
    LandMark = 1
};

/// A column of the list of matches.
struct ResultColumn
{
    const char16_t* Heading = u"";
    int WidthParts = 1; ///< how many such columns fill the list's width
    QString CRoadMapResult::*Field = nullptr;
    const char16_t* WhenEmpty = u""; ///< shown in place of an empty text

    [[nodiscard]] QString Text(const CRoadMapResult& result) const;
};

/// What differs between the two searches when they end.
struct SearchOutcome
{
    std::span<const ResultColumn> Columns; ///< from left to right
    const char16_t* Cancelled = u"";       ///< message of a search that did not finish
    const char16_t* NothingFound = u"";    ///< message of a search without a match

    [[nodiscard]] static const SearchOutcome& Of(SearchRule rule);
    /// Whether the status of a search's end says that it ran to its end.
    [[nodiscard]] static bool IsFinished(int status);
};
