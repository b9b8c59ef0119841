#pragma once

#include <QDate>
#include <QStringList>
#include <QStringView>

#include <optional>

namespace tarvel {

/// What comes first in dates such as 03/12/15, which do not say it.
enum class Tagesfolge { MonatZuerst, TagZuerst };

/// The day that @p text means in one of the forms that other programs write: 2015-03-12,
/// 12.03.2015, 12.3.15, 03/12/15 or 3-12-2015 by @p folge, each with a time behind it or without,
/// or 46347, the days since 30 December 1899. Years of two digits lie in the hundred years up to
/// the one after @p heute. nullopt for anything else and for days that no examination can be of:
/// before 1900 or after the year behind @p heute.
[[nodiscard]] std::optional<QDate> datumAusForm(QStringView text, Tagesfolge folge,
                                                const QDate& heute);

/// Which of them the dates follow, as far as one says it: its first or second number is no month.
/// nullopt when none says it, or they contradict each other.
[[nodiscard]] std::optional<Tagesfolge> tagesfolge(const QStringList& daten);

/// Whether a date would be another day in the other order.
[[nodiscard]] bool istMehrdeutig(QStringView text, const QDate& heute);

} // namespace tarvel
