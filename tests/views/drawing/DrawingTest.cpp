#include "drawing/ContinuousRectangle.h"
#include "drawing/Symbol.h"

#include <QDir>
#include <QTest>
#include <cmath>

using namespace kova;

namespace {

// Returns the curvature of a cubic curve at its start.
qreal curvature(QPointF p0, QPointF p1, QPointF p2) {
    const QPointF first = p1 - p0;
    const QPointF second = p2 - p1;
    const qreal cross = first.x() * second.y() - first.y() * second.x();
    return 2.0 / 3.0 * cross / std::pow(std::hypot(first.x(), first.y()), 3);
}

} // namespace

class DrawingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void curvatureOfCornersIsContinuous_data() {
        QTest::addColumn<QSizeF>("size");
        QTest::addColumn<qreal>("radius");
        QTest::newRow("card") << QSizeF(416, 90) << 12.0;
        QTest::newRow("panel") << QSizeF(420, 580) << 16.0;
        QTest::newRow("tight") << QSizeF(60, 20) << 8.0;
    }
    // Where two curves or an edge meet, the curvature on both sides is equal, and at most the arc's.
    void curvatureOfCornersIsContinuous() {
        QFETCH(QSizeF, size);
        QFETCH(qreal, radius);
        const QPainterPath path = continuousRectangle(QRectF({0, 0}, size), radius);
        qreal before = 0;
        int curves = 0;
        for (int i = 1; i < path.elementCount(); ++i) {
            if (path.elementAt(i).type == QPainterPath::LineToElement) {
                QVERIFY(std::abs(before) * radius < 0.01);
                before = 0;
            } else if (path.elementAt(i).type == QPainterPath::CurveToElement) {
                const QPointF p0 = path.elementAt(i - 1);
                const QPointF p1 = path.elementAt(i);
                const QPointF p2 = path.elementAt(i + 1);
                const QPointF p3 = path.elementAt(i + 2);
                QVERIFY(std::abs(curvature(p0, p1, p2) - before) * radius < 0.01);
                before = -curvature(p3, p2, p1);
                QVERIFY(std::abs(before) * radius < 1.01);
                curves += 1;
            }
        }
        QCOMPARE(curves, 12);
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

    void everySymbolIsDrawnInOneColour_data() {
        QTest::addColumn<QString>("name");
        const QFileInfoList files = QDir(QStringLiteral(":/symbols")).entryInfoList();
        for (const QFileInfo &file : files) {
            QTest::newRow(qPrintable(file.completeBaseName())) << file.completeBaseName();
        }
    }
    void everySymbolIsDrawnInOneColour() {
        QFETCH(QString, name);
        const QColor color(200, 100, 50);
        for (const qreal scale : {1.0, 1.25, 2.0}) {
            const QImage image = symbolImage(name, 48, color, scale);
            QCOMPARE(image.size(), (QSizeF(symbolSize(name, 48)) * scale).toSize());
            qint64 covered = 0;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    const QColor pixel = image.pixelColor(x, y);
                    covered += pixel.alpha();
                    const bool isAtEdge =
                        x == 0 || y == 0 || x == image.width() - 1 || y == image.height() - 1;
                    QVERIFY(!isAtEdge || pixel.alpha() < 16);
                    QVERIFY(pixel.alpha() < 255 || pixel.rgb() == color.rgb());
                }
            }
            const qint64 all = 255LL * image.width() * image.height();
            QVERIFY(covered > all / 20 && covered < all * 9 / 10);
        }
    }
};

QTEST_MAIN(DrawingTest)
#include "DrawingTest.moc"
