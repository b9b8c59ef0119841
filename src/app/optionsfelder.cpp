#include "app/optionsfelder.h"

#include "platform/profil.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

const Einstellungszeile& zeileVon(Einstellung id) {
    return einstellungstabelle()[static_cast<std::size_t>(id)];
}

} // namespace

void Optionsfelder::textfeld(Einstellung id, QLineEdit* zeile,
                             const std::function<void(const QString&)>& zeige) {
    const Einstellungszeile& eintrag = zeileVon(id);
    zeile->setMaxLength(std::min(zeile->maxLength(), eintrag.puffer - 1));
    // A key without a value reads as its default, so an emptied field shows that at once.
    const auto wert = [zeile, vorgabe = eintrag.text.toString()] {
        const QString text = zeile->text().trimmed();
        return text.isEmpty() ? vorgabe : text;
    };
    QObject::connect(zeile, &QLineEdit::editingFinished, zeile, [zeile, wert, zeige] {
        if (const QString text = wert(); text != zeile->text()) {
            zeige(text);
        }
    });
    auto zuletzt = std::make_shared<QString>(eintrag.text.toString());
    felder_.push_back({id,
                       [id, zuletzt, zeige](const Einstellungen& e) {
                           *zuletzt = e.text(id, *zuletzt);
                           zeige(*zuletzt);
                       },
                       wert, [zuletzt, wert] { *zuletzt = wert(); }});
}

void Optionsfelder::text(Einstellung id, QLineEdit* feld) {
    textfeld(id, feld, [feld](const QString& text) { feld->setText(text); });
}

void Optionsfelder::text(Einstellung id, QComboBox* feld) {
    textfeld(id, feld->lineEdit(), [feld](const QString& text) { feld->setCurrentText(text); });
}

void Optionsfelder::schalter(Einstellung id, QCheckBox* feld) {
    felder_.push_back({id, [id, feld](const Einstellungen& e) { feld->setChecked(e.schalter(id)); },
                       [feld] { return QString::number(feld->isChecked() ? 1 : 0); }});
}

void Optionsfelder::auswahl(Einstellung id, QButtonGroup* gruppe) {
    felder_.push_back(
        {id,
         [id, gruppe](const Einstellungen& e) {
             const int letzter = static_cast<int>(gruppe->buttons().size()) - 1;
             gruppe->button(std::clamp<int>(e.zahl(id), 0, letzter))->setChecked(true);
         },
         [gruppe] { return QString::number(gruppe->checkedId()); }});
}

void Optionsfelder::auswahl(Einstellung id, QComboBox* liste) {
    felder_.push_back({id,
                       [id, liste](const Einstellungen& e) {
                           liste->setCurrentIndex(
                               std::clamp<int>(e.zahl(id), 0, liste->count() - 1));
                       },
                       [liste] { return QString::number(liste->currentIndex()); }});
}

void Optionsfelder::zahl(Einstellung id, QSpinBox* feld) {
    felder_.push_back({id, [id, feld](const Einstellungen& e) { feld->setValue(e.zahl(id)); },
                       [feld] { return QString::number(feld->value()); }});
}

void Optionsfelder::nurSchreiben(Einstellung id, std::function<int()> wert) {
    felder_.push_back({id, [](const Einstellungen&) {},
                       [wert = std::move(wert)] { return QString::number(wert()); }});
}

void Optionsfelder::lade(const Einstellungen& einstellungen) {
    for (Feld& feld : felder_) {
        feld.lade(einstellungen);
        feld.gezeigt = feld.wert();
    }
}

bool Optionsfelder::geändert(Einstellung id) const {
    return std::any_of(felder_.begin(), felder_.end(), [id](const Feld& feld) {
        return feld.id == id && feld.wert() != feld.gezeigt;
    });
}

void Optionsfelder::speichere(Profil& profil) const {
    for (const Feld& feld : felder_) {
        setze(profil, feld.id, feld.wert());
    }
}

void Optionsfelder::speichernGeänderte(Profil& profil, const Einstellungen& einstellungen) const {
    for (const Feld& feld : felder_) {
        if (const QString wert = feld.wert();
            wert != QString::number(einstellungen.zahl(feld.id))) {
            setze(profil, feld.id, wert);
        }
    }
}

void Optionsfelder::gespeichert() {
    for (const Feld& feld : felder_) {
        if (feld.gespeichert) {
            feld.gespeichert();
        }
    }
}

const QString& Beschriftungen::operator()(Wort wort) const {
    return std::visit([this](auto id) -> const QString& { return texte_(id); }, wort);
}

void Beschriftungen::nimm(std::function<void()> beschrifte) {
    alle_.push_back(std::move(beschrifte));
}

QLabel* Beschriftungen::label(Wort wort, QWidget* feld) {
    auto* label = new QLabel;
    label->setBuddy(feld);
    nimm([this, wort, label, feld] {
        label->setText((*this)(wort));
        feld->setAccessibleName((*this)(wort));
    });
    return label;
}

QGroupBox* Beschriftungen::gruppe(Wort wort, const QString& name) {
    auto* gruppe = new QGroupBox;
    gruppe->setObjectName(name);
    nimm([this, wort, gruppe] { gruppe->setTitle((*this)(wort)); });
    return gruppe;
}

void Beschriftungen::knopf(Wort wort, QAbstractButton* knopf) {
    nimm([this, wort, knopf] { knopf->setText((*this)(wort)); });
}

void Beschriftungen::wendeAn() const {
    for (const auto& beschrifte : alle_) {
        beschrifte();
    }
}

QButtonGroup* optionsknöpfe(Beschriftungen& beschriftungen, QGroupBox* gruppe, const QString& name,
                            std::initializer_list<Beschriftungen::Wort> worte) {
    auto* layout = new QVBoxLayout(gruppe);
    auto* knöpfe = new QButtonGroup(gruppe);
    for (const Beschriftungen::Wort& wort : worte) {
        const int nummer = static_cast<int>(knöpfe->buttons().size());
        auto* knopf = new QRadioButton;
        knopf->setObjectName(name + u'_' + QString::number(nummer));
        beschriftungen.knopf(wort, knopf);
        knöpfe->addButton(knopf, nummer);
        layout->addWidget(knopf);
    }
    return knöpfe;
}

} // namespace tarvel
