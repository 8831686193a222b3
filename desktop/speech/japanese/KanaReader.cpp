#include "KanaReader.h"

#include "KanaText.h"

#include <QDir>
#include <QtDebug>

namespace kova {

namespace {

constexpr qsizetype longestText = 5'000; // a quarter of an hour; no alarm rings that long

QStringList arguments() {
    // Debian's place for it. Elsewhere it is what the analyser is set to.
    const QString dictionary = QStringLiteral("/var/lib/mecab/dic/ipadic-utf8");
    QStringList list{QStringLiteral("--node-format=%M\\t%H\\n"), QStringLiteral("--eos-format=\\n"),
                     QStringLiteral("--input-buffer-size=65536")};
    if (QDir(dictionary).exists()) {
        list += {QStringLiteral("--dicdir"), dictionary};
    }
    return list;
}

} // namespace

KanaReader::KanaReader(std::chrono::milliseconds patience) {
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_patience, &QTimer::timeout, this, [this] { fail(QStringLiteral("MeCab takes too long")); });
}

KanaReader::~KanaReader() {
    abandon();
}

void KanaReader::read(const QString &text, Done done) {
    abandon();
    m_done = std::move(done);
    if (text == m_text && !m_kana.isEmpty()) {
        end(m_kana);
        return;
    }
    m_text = text;
    if (text.size() > longestText) {
        fail(QStringLiteral("the text is too long"));
    } else {
        start();
    }
}

void KanaReader::start() {
    m_analyser = new QProcess(this);
    m_analyser->setStandardErrorFile(QProcess::nullDevice());
    connect(m_analyser, &QProcess::finished, this, &KanaReader::analysed);
    connect(m_analyser, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            fail(QStringLiteral("MeCab can't be started"));
        }
    });
    m_patience.start();
    m_analyser->start(QStringLiteral("mecab"), arguments());
    if (m_analyser) {
        m_analyser->write(forAnalyser(m_text));
        m_analyser->closeWriteChannel();
    }
}

void KanaReader::analysed(int code, QProcess::ExitStatus status) {
    const bool isWhole = status == QProcess::NormalExit && code == 0;
    const QString kana = isWhole ? kanaOf(m_analyser->readAllStandardOutput()) : QString();
    if (kana.isEmpty()) {
        fail(QStringLiteral("MeCab can't read it; is its IPADIC dictionary installed?"));
    } else {
        end(kana);
    }
}

// Its answer is of no more use.
void KanaReader::abandon() {
    m_patience.stop();
    if (m_analyser) {
        constexpr int untilKilled = 500; // ms
        m_analyser->disconnect(this);
        m_analyser->kill();
        m_analyser->waitForFinished(untilKilled);
        m_analyser->deleteLater(); // this may be one of its own signals
        m_analyser.clear();
    }
}

void KanaReader::fail(const QString &reason) {
    if (!std::exchange(m_hasTold, true)) {
        qWarning().noquote() << "kova-alarm: Japanese is spoken as it is written:" << reason;
    }
    end(m_text);
}

void KanaReader::end(const QString &kana) {
    abandon();
    m_kana = kana;
    if (const Done done = std::exchange(m_done, {})) {
        done(kana);
    }
}

} // namespace kova
