#pragma once

#include <QObject>
#include <QPointer>
#include <QProcess>
#include <QTimer>
#include <functional>

namespace kova {

/// Converts Japanese text to kana by MeCab and its IPADIC dictionary, for voices that cannot read kanji.
class KanaReader : public QObject {
public:
    /// Receives the reading, or the text itself if there is none; the first failure is logged on standard
    /// error.
    using Done = std::function<void(const QString &kana)>;

    explicit KanaReader(std::chrono::milliseconds timeout = std::chrono::seconds(1));
    ~KanaReader() override;

    /// Replaces a pending request. Calls `done` from the event loop, or before returning if the reading is
    /// cached or no analysis can be started.
    void read(const QString &text, Done done);

private:
    void start();
    void analysed(int code, QProcess::ExitStatus status);
    void killAnalyser();
    void fail(const QString &reason);
    void end(const QString &kana);

    QPointer<QProcess> m_analyser; ///< a child of this; null if none is running
    QTimer m_timeout;
    QString m_text; ///< of the last request
    QString m_kana; ///< its reading, since an alarm repeats its text
    Done m_done;
    bool m_hasWarned = false;
};

} // namespace kova
