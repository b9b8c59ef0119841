#include "app/info.h"

#include "app/symbol.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <jpeglib.h>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

QString bibliotheken() {
    return u"Qt "_s + QString::fromLatin1(qVersion()) + u" (LGPL 3), libjpeg-turbo "_s +
           QString::number(LIBJPEG_TURBO_VERSION_NUMBER / 1'000'000) + u'.' +
           QString::number(LIBJPEG_TURBO_VERSION_NUMBER / 1000 % 1000) +
           u" (BSD), SQLite, SQLiteCpp (MIT)"_s;
}

} // namespace

Info::Info(const Texte& texte, QWidget* parent)
    : QDialog(parent) {
    setObjectName(u"Info"_s);
    setWindowTitle(texte(Text::TarvelInfo));
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(12);

    auto* kopf = new QHBoxLayout;
    kopf->setSpacing(16);
    auto* zeichen = new QLabel;
    constexpr int Zeichengröße = 72;
    zeichen->setPixmap(
        programmsymbol().pixmap(QSize(Zeichengröße, Zeichengröße), devicePixelRatio()));
    kopf->addWidget(zeichen, 0, Qt::AlignTop);
    auto* titel = new QVBoxLayout;
    auto* name = new QLabel(texte(Meldung::Programmname));
    QFont groß = name->font();
    groß.setPointSizeF(groß.pointSizeF() * 2);
    groß.setBold(true);
    name->setFont(groß);
    titel->addWidget(name);
    titel->addWidget(
        new QLabel(texte(Meldung::InfoVersion).arg(QString::fromLatin1(TARVEL_VERSION))));
    kopf->addLayout(titel, 1);
    layout->addLayout(kopf);

    for (const QString& absatz :
         {texte(Text::MerkmalsuntersuchungHonigbienen) + u'\n' +
              texte(Text::InfoMessungCubitalindex) + u'\n' + texte(Text::InfoMessungKorrelation),
          texte(Meldung::InfoLizenz).arg(u"MIT"_s) + u'\n' +
              texte(Meldung::InfoBibliotheken).arg(bibliotheken())}) {
        auto* label = new QLabel(absatz);
        label->setWordWrap(true);
        constexpr int Zeilenlänge = 60; // characters: a comfortable line
        label->setMinimumWidth(Zeilenlänge * label->fontMetrics().averageCharWidth());
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        layout->addWidget(label);
    }
    auto* knöpfe = new QDialogButtonBox(QDialogButtonBox::Close);
    knöpfe->button(QDialogButtonBox::Close)->setObjectName(u"bef_Schliessen"_s);
    knöpfe->button(QDialogButtonBox::Close)->setText(texte(Text::Schließen));
    connect(knöpfe, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(knöpfe);
}

} // namespace tarvel
