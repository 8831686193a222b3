#include "Messages.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <climits>
#include <cmath>

namespace kova::message {

namespace {

using Kind = Answer::Kind;

struct Word {
    Kind kind;
    std::string_view text;
    bool hasReason;
};

constexpr std::array words{
    Word{Kind::Playing, "playing", false}, Word{Kind::Alive, "alive", false},
    Word{Kind::Waiting, "waiting", true},  Word{Kind::Refused, "refused", true},
    Word{Kind::Ended, "ended", false},
};

// Takes the text up to the next space.
std::string_view takeWord(std::string_view &text) {
    const std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(text.size(), word.size() + 1));
    return word;
}

template <typename Number> std::optional<Number> takeNumber(std::string_view &text) {
    const std::string_view word = takeWord(text);
    Number number{};
    const auto [end, error] = std::from_chars(word.begin(), word.end(), number);
    return error == std::errc() && end == word.end() ? std::optional(number) : std::nullopt;
}

template <typename Number> void append(std::string &text, Number number) {
    std::array<char, 32> digits{};
    text.append(digits.data(), std::to_chars(digits.begin(), digits.end(), number).ptr);
    text += ' ';
}

std::optional<Request> decodePlay(std::string_view text) {
    const auto loops = takeNumber<int>(text);
    const auto volume = takeNumber<float>(text);
    const auto time = takeNumber<int>(text);
    const bool isPath =
        text.starts_with('/') && text.size() < PATH_MAX && text.find('\0') == std::string_view::npos;
    if (!loops || !volume || !time || *time <= 0 || !isPath) {
        return std::nullopt;
    }
    return Play{.path = std::string(text),
                .loops = std::max(*loops, -1),
                .volume = clampedVolume(*volume),
                .longest = std::chrono::milliseconds(*time)};
}

std::string encodePlay(const Play &play) {
    std::string text = "play ";
    append(text, play.loops);
    append(text, play.volume);
    append(text, static_cast<int>(play.longest.count()));
    return text + play.path;
}

} // namespace

float clampedVolume(float volume) {
    return std::isnan(volume) ? 1.0F : std::clamp(volume, 0.0F, 1.0F);
}

std::string encode(const Request &request) {
    if (const auto *const play = std::get_if<Play>(&request)) {
        return encodePlay(*play);
    }
    if (const auto *const volume = std::get_if<Volume>(&request)) {
        std::string text = "volume ";
        append(text, volume->volume);
        text.pop_back();
        return text;
    }
    return "stop";
}

std::optional<Request> decodeRequest(std::string_view packet) {
    const std::string_view word = takeWord(packet);
    if (word == "play") {
        return decodePlay(packet);
    }
    if (word == "volume") {
        const auto volume = takeNumber<float>(packet);
        return volume && packet.empty() ? std::optional<Request>(Volume{clampedVolume(*volume)})
                                        : std::nullopt;
    }
    return word == "stop" && packet.empty() ? std::optional<Request>(Stop{}) : std::nullopt;
}

std::string encode(const Answer &answer) {
    const auto *const word = std::ranges::find(words, answer.kind, &Word::kind);
    return std::string(word->text) + (word->hasReason ? ' ' + answer.reason : std::string());
}

std::optional<Answer> decodeAnswer(std::string_view packet) {
    constexpr size_t longestReason = 300;
    const std::string_view name = takeWord(packet);
    const auto *const word = std::ranges::find(words, name, &Word::text);
    if (word == words.end() || word->hasReason == packet.empty()) {
        return std::nullopt;
    }
    std::string reason(packet.substr(0, longestReason));
    std::ranges::replace_if(
        reason, [](unsigned char letter) { return letter < ' ' || letter == 0x7F; }, ' ');
    return Answer{word->kind, reason};
}

} // namespace kova::message
