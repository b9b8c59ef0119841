// The least that a window of this toolkit costs: shows an empty one and ends after its first paint.

#include <QApplication>
#include <QTimer>
#include <QWidget>

namespace {

class Fenster : public QWidget {
protected:
    void paintEvent(QPaintEvent*) override { QTimer::singleShot(0, qApp, &QCoreApplication::quit); }
};

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    Fenster fenster;
    fenster.resize(1280, 720);
    fenster.show();
    return QApplication::exec();
}
