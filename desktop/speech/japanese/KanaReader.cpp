#include "KanaReader.h"

#include "KanaText.h"

#include <QDir>
#include <QStandardPaths>
#include <QtDebug>

namespace kova {

namespace {

constexpr qsizetype maxTextLength = 5'000; // a quarter of an hour of speech

QStringList arguments() {
    // Debian's location; elsewhere MeCab's own configuration applies.
    const QString dictionary = QStringLiteral("/var/lib/mecab/dic/ipadic-utf8");
    QStringList list{QStringLiteral("--node-format=%M\\t%H\\n"), QStringLiteral("--eos-format=\\n"),
                     QStringLiteral("--input-buffer-size=65536")};
    if (QDir(dictionary).exists()) {
        list += {QStringLiteral("--dicdir"), dictionary};
    }
    return list;
}

} // namespace

KanaReader::KanaReader(std::chrono::milliseconds timeout) {
    m_timeout.setSingleShot(true);
    m_timeout.setInterval(timeout);
    connect(&m_timeout, &QTimer::timeout, this, [this] { fail(QStringLiteral("MeCab does not finish")); });
}

KanaReader::~KanaReader() {
    killAnalyser();
}

void KanaReader::read(const QString &text, Done done) {
    killAnalyser();
    m_done = std::move(done);
    if (text == m_text && !m_kana.isEmpty()) {
        end(m_kana);
        return;
    }
    m_text = text;
    if (text.size() > maxTextLength) {
        fail(QStringLiteral("the text is too long"));
    } else {
        start();
    }
}

void KanaReader::start() {
    // QProcess in Qt 6.4 loses a descriptor at each start of a missing program.
    const QString program = QStandardPaths::findExecutable(QStringLiteral("mecab"));
    if (program.isEmpty()) {
        fail(QStringLiteral("MeCab cannot be started"));
        return;
    }
    m_analyser = new QProcess(this);
    m_analyser->setStandardErrorFile(QProcess::nullDevice());
    connect(m_analyser, &QProcess::finished, this, &KanaReader::analysed);
    connect(m_analyser, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            fail(QStringLiteral("MeCab cannot be started"));
        }
    });
    m_timeout.start();
    m_analyser->start(program, arguments());
    if (m_analyser) {
        m_analyser->write(forAnalyser(m_text));
        m_analyser->closeWriteChannel();
    }
}

void KanaReader::analysed(int code, QProcess::ExitStatus status) {
    const bool isWhole = status == QProcess::NormalExit && code == 0;
    const QString kana = isWhole ? kanaOf(m_analyser->readAllStandardOutput()) : QString();
    if (kana.isEmpty()) {
        fail(QStringLiteral("MeCab has no reading; is its IPADIC dictionary installed?"));
    } else {
        end(kana);
    }
}

void KanaReader::killAnalyser() {
    m_timeout.stop();
    if (m_analyser) {
        constexpr int gracePeriod = 500; // ms
        m_analyser->disconnect(this);
        m_analyser->kill();
        m_analyser->waitForFinished(gracePeriod);
        m_analyser->deleteLater(); // not deleted here, since this may be called by one of its signals
        m_analyser.clear();
    }
}

void KanaReader::fail(const QString &reason) {
    if (!std::exchange(m_hasWarned, true)) {
        qWarning().noquote() << "kova-alarm: no kana reading, speaking the original text:" << reason;
    }
    end(m_text);
}

void KanaReader::end(const QString &kana) {
    killAnalyser();
    m_kana = kana;
    if (const Done done = std::exchange(m_done, {})) {
        done(kana);
    }
}

} // namespace kova
