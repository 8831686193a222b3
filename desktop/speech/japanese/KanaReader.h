#pragma once

#include <QObject>
#include <QPointer>
#include <QProcess>
#include <QTimer>
#include <functional>

namespace kova {

/// Reads Japanese text in kana, by MeCab and its IPADIC dictionary: for voices that know no kanji. The
/// analysis runs in a process of its own, which takes its 50 MB with it when it ends.
class KanaReader : public QObject {
public:
    /// The text itself where no reading is found; the first time, a line on standard error says why.
    using Done = std::function<void(const QString &kana)>;

    explicit KanaReader(std::chrono::milliseconds patience = std::chrono::seconds(1));
    ~KanaReader() override;

    /// Takes the place of a text that is not done. Runs `done` from the event loop, or at once for what is
    /// known.
    void read(const QString &text, Done done);

private:
    void start();
    void analysed(int code, QProcess::ExitStatus status);
    void abandon();
    void fail(const QString &reason);
    void end(const QString &kana);

    QPointer<QProcess> m_analyser; ///< a child of this; null when nothing is being read
    QTimer m_patience;
    QString m_text; ///< the last one,
    QString m_kana; ///< and its reading, since an alarm repeats it
    Done m_done;
    bool m_hasTold = false;
};

} // namespace kova
