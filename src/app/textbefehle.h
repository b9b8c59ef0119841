#pragma once

class QLineEdit;

namespace tarvel {

/// The text field that the keyboard is in, that of an editable list too; null for none.
[[nodiscard]] QLineEdit* textfeldMitFokus();
/// Carries out item 5 to 8 of the edit menu on the selected text of that field: cut, copy, paste,
/// delete.
void bearbeiteText(int index);

} // namespace tarvel
