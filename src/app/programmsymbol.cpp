#include "app/programmsymbol.h"

#include <QApplication>
#include <QIcon>

namespace tarvel {

using namespace Qt::StringLiterals;

void zeigeProgrammsymbol() {
    QApplication::setWindowIcon(QIcon(u":/tarvel/icons/tarvel.svg"_s));
}

} // namespace tarvel
