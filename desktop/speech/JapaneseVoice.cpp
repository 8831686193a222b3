#include "JapaneseVoice.h"

#include <QtDebug>
#include <algorithm>

namespace kova {

namespace {

using Lines = SpeechConnection::Lines;

// eSpeak's modules: their Japanese voice cannot read kanji, and listing their voices takes seconds.
bool isESpeak(const QByteArray &module) {
    return module.startsWith("espeak");
}

// A line consists of name, language and variant, separated by tabs.
bool isJapanese(const QByteArray &voice) {
    const QByteArray language = voice.split('\t').value(1).toLower();
    return language == "ja" || language.startsWith("ja-") || language.startsWith("ja_");
}

// For a module whose process died, the service lists the voices of eSpeak, more than ten thousand.
bool hasJapaneseVoice(const Lines &voices) {
    constexpr qsizetype maxVoices = 2000;
    return voices.size() <= maxVoices && std::any_of(voices.begin(), voices.end(), isJapanese);
}

QByteArray valueOf(int code, const Lines &lines) {
    constexpr int value = 251;
    return code == value ? lines.value(0) : QByteArray();
}

} // namespace

void JapaneseVoice::select(Selected selected) {
    m_selected = std::move(selected);
    if (m_state == State::Found) {
        apply();
    } else if (m_state == State::Unknown) {
        search();
    }
}

void JapaneseVoice::search() {
    m_state = State::Searching;
    if (std::exchange(m_skipsSearch, false)) {
        apply();
        return;
    }
    m_connection.command("GET OUTPUT_MODULE",
                         [this](int code, const Lines &lines) { m_default = valueOf(code, lines); });
    m_connection.command("LIST OUTPUT_MODULES", [this](int, const Lines &modules) {
        m_candidates = modules;
        if (m_candidates.removeOne(m_default)) {
            m_candidates.prepend(m_default);
        }
        m_candidates.removeIf(isESpeak);
        searchNext();
    });
}

void JapaneseVoice::searchNext() {
    if (m_candidates.isEmpty()) {
        apply();
        return;
    }
    setModule(m_candidates.first());
    m_connection.command("LIST SYNTHESIS_VOICES", [this](int, const Lines &voices) {
        const QByteArray module = m_candidates.takeFirst();
        if (hasJapaneseVoice(voices)) {
            m_better = module;
            m_candidates.clear();
        }
        searchNext();
    });
}

void JapaneseVoice::apply() {
    m_state = State::Found;
    if (!m_isRejected) {
        setModule(m_better.isEmpty() ? m_default : m_better);
    }
    m_connection.command(
        "SET SELF LANGUAGE ja"); // also selects the module configured for the language, if any
    if (m_isRejected) {
        setModule(m_default);
    }
    m_connection.command("GET OUTPUT_MODULE", [this](int code, const Lines &lines) {
        m_current = valueOf(code, lines);
        m_selected(isESpeak(m_current));
    });
}

void JapaneseVoice::setModule(const QByteArray &module) {
    if (!module.isEmpty()) {
        m_connection.command("SET SELF OUTPUT_MODULE " + module);
    }
}

bool JapaneseVoice::reject() {
    if (m_isRejected || m_current == m_default || m_default.isEmpty()) {
        return false;
    }
    m_isRejected = true;
    qWarning().noquote() << "kova-alarm: the speech module" << m_current << "failed, using" << m_default;
    return true;
}

void JapaneseVoice::reset() {
    m_state = State::Unknown;
    m_isRejected = false;
    m_default.clear();
    m_better.clear();
    m_current.clear();
}

// A module that does not reply blocks the whole service, so the next connection does not search again.
void JapaneseVoice::connectionLost() {
    m_skipsSearch = m_skipsSearch || m_state == State::Searching;
    m_state = State::Unknown;
}

} // namespace kova
