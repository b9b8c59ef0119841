#pragma once

#include "lang/texte.h"

#include <QDialog>

namespace tarvel {

/// The about box: name, version, purpose, licence and libraries.
class Info : public QDialog {
public:
    explicit Info(const Texte& texte, QWidget* parent = nullptr);
};

} // namespace tarvel
