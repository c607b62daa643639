#include "Mnemonics.h"

#include <cctype>
#include <cstddef>
#include <map>
#include <optional>
#include <set>

namespace genvara {
namespace {

bool IsKey(char character) {
    return std::isalnum(static_cast<unsigned char>(character)) != 0;
}

char KeyOf(char character) {
    return static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
}

/// Places of a caption that may be marked, those that begin a word first.
std::vector<std::size_t> Places(const std::string& caption) {
    std::vector<std::size_t> first;
    std::vector<std::size_t> within;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (IsKey(caption[i])) {
            (i == 0 || !IsKey(caption[i - 1]) ? first : within).push_back(i);
        }
    }
    first.insert(first.end(), within.begin(), within.end());
    return first;
}

/// Hands out keys: free ones first, and then so that as many captions as possible get one, where whoever
/// holds a key moves to another of his if there is one.
class Keys {
  public:
    explicit Keys(const std::vector<std::string>& captions) : m_captions(captions) {}

    void Reserve(char key, std::size_t caption) { m_holders[key] = caption; }
    void Take(char key) { m_taken.insert(key); }

    /// A key that nobody has, if the caption holds one.
    void GiveFree(std::size_t caption) {
        for (const std::size_t place : Places(m_captions[caption])) {
            const char key = KeyOf(m_captions[caption][place]);
            if (!m_taken.contains(key) && m_holders.try_emplace(key, caption).second) {
                m_places[caption] = place;
                return;
            }
        }
    }

    bool Give(std::size_t caption, std::set<char>& tried) {
        for (const std::size_t place : Places(m_captions[caption])) {
            const char key = KeyOf(m_captions[caption][place]);
            if (m_taken.contains(key) || !tried.insert(key).second) {
                continue;
            }
            const auto holder = m_holders.find(key);
            if (holder == m_holders.end() || (!Marked(holder->second) && Give(holder->second, tried))) {
                m_holders[key] = caption;
                m_places[caption] = place;
                return true;
            }
        }
        return false;
    }

    [[nodiscard]] bool Marked(std::size_t caption) const {
        return m_captions[caption].find('&') != std::string::npos;
    }
    [[nodiscard]] const std::map<std::size_t, std::size_t>& GivenPlaces() const { return m_places; }

  private:
    const std::vector<std::string>& m_captions;
    std::set<char> m_taken;
    std::map<char, std::size_t> m_holders;
    std::map<std::size_t, std::size_t> m_places;
};

}  // namespace

std::vector<std::string> WithMnemonics(std::vector<std::string> captions, std::string_view taken) {
    Keys keys(captions);
    for (const char key : taken) {
        keys.Take(key);
    }
    for (std::size_t i = 0; i < captions.size(); ++i) {
        const std::size_t mark = captions[i].find('&');
        if (mark != std::string::npos && mark + 1 < captions[i].size()) {
            keys.Reserve(KeyOf(captions[i][mark + 1]), i);
        }
    }
    for (std::size_t i = 0; i < captions.size(); ++i) {
        if (!keys.Marked(i)) {
            keys.GiveFree(i);
        }
    }
    for (std::size_t i = 0; i < captions.size(); ++i) {
        std::set<char> tried;
        if (!keys.Marked(i) && !keys.GivenPlaces().contains(i)) {
            keys.Give(i, tried);
        }
    }
    const std::map<std::size_t, std::size_t> places = keys.GivenPlaces();
    for (const auto& [caption, place] : places) {
        captions[caption].insert(place, 1, '&');
    }
    return captions;
}

}  // namespace genvara
