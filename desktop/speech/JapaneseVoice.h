#pragma once

#include "SpeechConnection.h"

namespace kova {

/// Selects the output module for Japanese text: the one that the user configured for the language, else one
/// other than eSpeak that has a Japanese voice, else the default module.
class JapaneseVoice {
public:
    /// Receives whether the voice reads kana only, as eSpeak's does.
    using Selected = std::function<void(bool readsKanaOnly)>;

    explicit JapaneseVoice(SpeechConnection &connection) : m_connection(connection) {}

    /// Sets the connection's language and module; the modules are searched once per connection. Replaces a
    /// pending request.
    void select(Selected selected);

    bool isSelected() const { return m_state != State::Unknown; }

    /// Makes select() choose the default module until the connection is closed. Returns false if that cannot
    /// help.
    bool reject();

    /// To be called when the connection is opened, and when it is lost.
    void reset();
    void connectionLost();

private:
    void search();
    void searchNext();
    void apply();
    void setModule(const QByteArray &module);

    enum class State { Unknown, Searching, Found };

    SpeechConnection &m_connection;
    Selected m_selected;
    State m_state = State::Unknown;
    bool m_skipsSearch = false;
    bool m_isRejected = false;
    SpeechConnection::Lines m_candidates;
    QByteArray m_default;
    QByteArray m_better; ///< empty if there is none
    QByteArray m_current;
};

} // namespace kova
