#pragma once

#include <QString>

#include <optional>

class QHelpEvent;
class QPainter;
class QWidget;

namespace tarvel {

/// Where a key goes among the spots 0 to @p letzte of a view: arrow keys to the next and the former
/// one, Home and End to the ends. @p stelle is -1 before the first. Empty for other keys;
/// without a spot there is none to go to either.
[[nodiscard]] std::optional<int> stelleNach(int taste, int stelle, int letzte);

/// Shows a tool tip that was asked for; without a text the one that is seen goes.
void zeigeTipp(QHelpEvent& frage, const QString& text, QWidget& ansicht);
/// A text as a tool tip shows it to the letter, whatever stands in it.
[[nodiscard]] QString tipptext(const QString& text);

/// The frame of a view that the keys go to. The pen afterwards is that for the spot they are at.
void maleTastenrahmen(QPainter& painter, const QWidget& ansicht);

} // namespace tarvel
