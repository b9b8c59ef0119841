#pragma once

#include <QDialog>

#include <array>

class QLabel;
class QPushButton;

namespace tarvel {

class Texte;

/// Window beside the measuring: where the eight points lie on the wing, drawn and in words.
/// Not modal; Escape closes it. It follows the language.
class MessHilfe : public QDialog {
public:
    /// @p texte must outlive the window.
    explicit MessHilfe(const Texte& texte, QWidget* parent = nullptr);

private:
    void beschrifte();

    const Texte& texte_;
    QWidget* bild_;
    std::array<QLabel*, 8> beschreibungen_{};
    QPushButton* schließen_;
};

} // namespace tarvel
