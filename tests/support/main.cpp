// Starts every test program: the toolkit must exist before any test touches a font or a widget,
// and no test may depend on the language or the place the machine is set to.

#include "platform/prozess.h"

#include <QApplication>
#include <QLocale>
#include <gmock/gmock.h>

int main(int argc, char** argv) {
    tarvel::richteProzessEin();
    QLocale::setDefault(QLocale::c());
    // A chooser of the system itself answers to a person only.
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication app(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
