// Reads a script for its directives alone. Only strings and comments need to be understood beside them, as no
// macro makes a directive.

#include "script/include_search.h"

#include "script/text.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <vector>
#include <zel/exception.h>

namespace zel {
namespace {

constexpr int kEnd = -1; // is read at the end of a file
// Files may have changed since the library has read them, and include each other without end now.
constexpr int kMostInclusions = 1'000'000;

/// Reads a script and its includes in the order of the library, character by character. Like there, what
/// reads past the end of an included file steps over one character of the including file.
class IncludeSearch {
public:
    explicit IncludeSearch(std::string const& script) { push(script); }

    std::optional<Zel::ScriptPlace> run();

private:
    struct Source {
        std::string name;
        std::string_view text;
        std::size_t position = 0;
        int line = 1;
    };

    bool push(std::string const& name);
    int peek(std::size_t offset = 0) const;
    int read();
    void popFinished();

    void skipLiteral();
    void skipLineComment();
    bool skipBlockComment();
    std::optional<std::string> readDirective();

    std::map<std::string, std::string> m_texts; // by name, as a file is read once
    std::vector<Source> m_sources;              // the last is being read
    int m_inclusions = 0;
};

/// False when the file cannot be read.
bool IncludeSearch::push(std::string const& name) {
    auto known = m_texts.find(name);
    try {
        if (known == m_texts.end())
            known = m_texts.emplace(name, scriptText(name)).first;
    } catch (Zel::FileException const&) {
        return false;
    }
    if (++m_inclusions <= kMostInclusions)
        m_sources.push_back({name, known->second});
    return true;
}

int IncludeSearch::peek(std::size_t offset) const {
    if (m_sources.empty() || offset >= m_sources.back().text.size() - m_sources.back().position)
        return kEnd;
    return static_cast<unsigned char>(m_sources.back().text[m_sources.back().position + offset]);
}

void IncludeSearch::popFinished() {
    while (!m_sources.empty() && m_sources.back().position == m_sources.back().text.size())
        m_sources.pop_back();
}

int IncludeSearch::read() {
    int const value = peek();
    popFinished();
    if (!m_sources.empty()) {
        Source& source = m_sources.back();
        source.line += source.text[source.position++] == '\n' ? 1 : 0;
    }
    return value;
}

void IncludeSearch::skipLiteral() {
    read();
    while (!m_sources.empty() && read() != '"') {
    }
}

void IncludeSearch::skipLineComment() {
    for (int value = 0; value != '\n' && value != kEnd;)
        value = read();
}

/// False when the comment has no end in its file.
bool IncludeSearch::skipBlockComment() {
    read();
    read();
    int value = read();
    for (int depth = 1; depth > 0;) {
        int const previous = value;
        value = read();
        if (previous == '/' && value == '*') {
            ++depth;
        } else if (previous == '*' && value == '/') {
            value = read();
            --depth;
        }
        if (depth > 0 && value == kEnd)
            return false;
    }
    return true;
}

/// The next word of a directive's line from a position on, which moves to the end of the word.
std::string_view nextWord(std::string_view text, std::size_t& position) {
    std::size_t const begin = std::min(text.find_first_not_of(" \t", position), text.size());
    position = std::min(text.find_first_of(" \t", begin), text.size());
    return text.substr(begin, position - begin);
}

/// The name of the file that the directive includes; nothing for other directives.
std::optional<std::string> IncludeSearch::readDirective() {
    read();
    while (peek() == ' ' || peek() == '\t' || peek() == '\0')
        read();
    std::string text;
    for (int value = read(); value != '\n' && value != kEnd; value = read())
        if (value != '\r')
            text += static_cast<char>(value);
    std::size_t position = 0;
    if (nextWord(text, position) != "include")
        return std::nullopt;
    std::string_view name = nextWord(text, position);
    if (name.starts_with('"'))
        name.remove_prefix(1);
    if (name.ends_with('"'))
        name.remove_suffix(1);
    return std::string(name);
}

std::optional<Zel::ScriptPlace> IncludeSearch::run() {
    for (popFinished(); !m_sources.empty(); popFinished()) {
        if (peek() == '"') {
            skipLiteral();
        } else if (peek() == '/' && peek(1) == '/') {
            skipLineComment();
        } else if (peek() == '/' && peek(1) == '*') {
            if (!skipBlockComment())
                return std::nullopt;
        } else if (peek() == '#') {
            Zel::ScriptPlace const place{m_sources.back().name, m_sources.back().line};
            auto const included = readDirective();
            if (included && !push(*included))
                return place;
        } else {
            read();
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<Zel::ScriptPlace> findFailedInclude(std::string const& script) {
    return IncludeSearch(script).run();
}

} // namespace zel
