#include "drawing/ContinuousRectangle.h"
#include "drawing/Symbol.h"

#include <QDir>
#include <QTest>
#include <QtMath>
#include <cmath>

using namespace kova;
using namespace Qt::StringLiterals;

class DrawingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Along the outline the direction does not begin to turn abruptly, as where a plain arc meets an edge.
    void curvatureOfCornersIsContinuous() {
        const qreal radius = 12;
        const QPainterPath path = continuousRectangle({0, 0, 416, 90}, radius);
        const int steps = 4000;
        const qreal turnOfAnArc = qRadiansToDegrees(path.length() / steps / radius);
        qreal turnBefore = 0;
        for (int step = 1; step <= steps; ++step) {
            const qreal angle = path.angleAtPercent(qreal(step) / steps);
            const qreal turn = std::remainder(angle - path.angleAtPercent(qreal(step - 1) / steps), 360);
            QVERIFY(std::abs(turn - turnBefore) < turnOfAnArc / 4);
            turnBefore = turn;
        }
    }

    void shortSidesAreRoundedToACircle() {
        for (const qreal radius : {16.0, 100.0}) {
            const QPainterPath path = continuousRectangle({0, 0, 32, 32}, radius);
            for (qreal percent = 0; percent < 1; percent += 0.01) {
                const QPointF point = path.pointAtPercent(percent) - QPointF(16, 16);
                QVERIFY(std::abs(std::hypot(point.x(), point.y()) - 16) < 0.02);
            }
        }
    }

    void everySymbolIsDrawnInOneColour() {
        const QColor color(200, 100, 50);
        const QFileInfoList files = QDir(u":/symbols"_s).entryInfoList();
        QVERIFY(!files.isEmpty());
        for (const QFileInfo &file : files) {
            const QString name = file.completeBaseName();
            const QImage image = symbolImage(name, 48, color, 1.25);
            QCOMPARE(image.size(), (QSizeF(symbolSize(name, 48)) * 1.25).toSize());
            qint64 covered = 0;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    const QColor pixel = image.pixelColor(x, y);
                    covered += pixel.alpha();
                    const bool isAtEdge = !image.rect().adjusted(1, 1, -1, -1).contains(x, y);
                    QVERIFY2(!isAtEdge || pixel.alpha() < 16, qPrintable(name));
                    QVERIFY2(pixel.alpha() < 255 || pixel.rgb() == color.rgb(), qPrintable(name));
                }
            }
            const qint64 all = 255LL * image.width() * image.height();
            QVERIFY2(covered > all / 20 && covered < all * 9 / 10, qPrintable(name));
        }
    }
};

QTEST_MAIN(DrawingTest)
#include "DrawingTest.moc"
