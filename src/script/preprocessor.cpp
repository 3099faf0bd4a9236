// Expands a script and its includes into the stream of characters and places, and reads that back.

#include "script/preprocessor.h"

#include "file/content.h"
#include "file/names.h"

#include <algorithm>
#include <utility>
#include <zel/script.h>

namespace Zel {
namespace {

constexpr int kEnd = -1; // is read at the end of a file

// Work, in bytes that take as long to read.
constexpr std::size_t kInclusionWork = 256;
constexpr std::size_t kDirectiveWork = 64;

// How often a file may be open at once. The second reading finds the errors that come of reading it again, as
// a macro that is defined already; the third could find no others.
constexpr int kMostEntries = 2;

constexpr std::size_t kMostWords = 3; // of any directive, with its keyword

int lineOf(std::uint64_t line) { return static_cast<int>(line); }

std::uint64_t lineFeeds(std::string_view text) {
    return static_cast<std::uint64_t>(std::count(text.begin(), text.end(), '\n'));
}

/// The first words of a directive's line. Blanks and tabs separate them.
std::vector<std::string> splitWords(std::string const& text) {
    std::vector<std::string> words;
    for (std::size_t begin = text.find_first_not_of(" \t");
         begin != std::string::npos && words.size() < kMostWords;) {
        std::size_t const end = text.find_first_of(" \t", begin);
        words.push_back(text.substr(begin, end - begin));
        begin = text.find_first_not_of(" \t", end);
    }
    return words;
}

std::string readWhole(std::string const& name) {
    std::string text;
    FileContent(name).readWhole([&text](std::size_t size) {
        text.resize(size);
        return text.data();
    });
    return text;
}

} // namespace

ScriptPreprocessor::ScriptPreprocessor(std::string const& fileName, Budget& budget)
    : m_budget(budget), m_output(&budget), m_marks(&budget) {
    pushFile(sourceOf(fileName));
    m_output.reserve(m_frames.back().text.size());
    try {
        run();
    } catch (Budget::Exceeded const&) {
        throwTooLarge(place());
    }
    m_sources.clear();
    m_macros.clear();
}

// Reading sources.

/// The file of that name. It is read when it is asked for the first time.
ScriptPreprocessor::NamedSource const& ScriptPreprocessor::sourceOf(std::string const& name) {
    auto const known = m_names.find(name);
    if (known != m_names.end())
        return *known;
    auto const [source, isNew] = m_sources.try_emplace(resolveName(name));
    if (isNew) {
        source->second.text = readWhole(name);
        m_budget.addFile(source->second.text.size());
    }
    return *m_names.emplace(name, &source->second).first;
}

/// Reading goes on in that file, whose text sourceOf has read.
void ScriptPreprocessor::pushFile(NamedSource const& source) {
    m_frames.push_back({&source.first, source.second->text, m_chain.size()});
    m_placeChanged = true;
    m_chain.push_back(source.second);
    ++source.second->entries;
}

/// The byte at that distance in the file being read; kEnd at its end, whatever follows in the including file.
int ScriptPreprocessor::peekSource(std::size_t offset) {
    if (m_frames.empty())
        return kEnd;
    SourceFrame const& frame = m_frames.back();
    if (offset >= frame.text.size() - frame.position)
        return kEnd;
    auto const byte = static_cast<unsigned char>(frame.text[frame.position + offset]);
    if (byte >= 0x80 && byte != 0xAE)
        throw ScriptPreprocessorException_InvalidCharacter(byte, frame.name->c_str(), lineOf(place().line));
    return byte;
}

void ScriptPreprocessor::popFinishedFrames() {
    while (!m_frames.empty() && m_frames.back().position >= m_frames.back().text.size()) {
        m_frames.pop_back();
        m_placeChanged = true;
    }
}

/// Meant: at the end of an included file this steps over the next character of the including one, which is
/// lost. Directives, line comments and string literals that read past the end of a file do this.
void ScriptPreprocessor::advanceSource() {
    popFinishedFrames();
    if (!m_frames.empty())
        ++m_frames.back().position;
}

int ScriptPreprocessor::readSource() {
    int const value = peekSource(0);
    advanceSource();
    return value;
}

/// Reads the characters of these kinds that come next in the file being read.
std::string_view ScriptPreprocessor::readRun(int kinds) {
    SourceFrame& frame = m_frames.back();
    std::size_t const begin = frame.position;
    while (frame.position < frame.text.size() && isOfKind(frame.text[frame.position], kinds))
        ++frame.position;
    return frame.text.substr(begin, frame.position - begin);
}

ScriptPreprocessor::Place ScriptPreprocessor::place() {
    SourceFrame& frame = m_frames.back();
    frame.countedLine += lineFeeds(frame.text.substr(frame.countedEnd, frame.position - frame.countedEnd));
    frame.countedEnd = frame.position;
    return {frame.countedLine, frame.name};
}

void ScriptPreprocessor::throwTooLarge(Place const& place) {
    throw ScriptPreprocessorException_TooLarge(place.name->c_str(), lineOf(place.line));
}

// Expanding.

void ScriptPreprocessor::run() {
    for (;;) {
        int value = peekSource(0);
        if (value == kEnd) {
            popFinishedFrames();
            value = peekSource(0);
        }
        if (value == kEnd)
            return;

        auto const character = static_cast<char>(value);
        int const kept = m_macros.empty() ? kPlain | kWord : kPlain; // without macros, words stay as they are
        if (isOfKind(character, kept)) {
            emitPlace();
            m_output += readRun(kept | kLineEnd); // lines follow from line feeds
        } else if (character == '"')
            copyStringLiteral();
        else if (character == '/' && peekSource(1) == '/')
            skipLineComment();
        else if (character == '/' && peekSource(1) == '*')
            skipBlockComment();
        else if (character == '#')
            handleDirective();
        else if (isOfKind(character, kWordStart))
            expandIdentifier();
        else if (character == '\r')
            advanceSource();
        else
            emit(readSource());
    }
}

/// Nothing is interpreted up to the next quote. A backslash does not protect a quote.
void ScriptPreprocessor::copyStringLiteral() {
    std::string const& start = *m_frames.back().name;
    emit(readSource());
    int value = 0;
    do {
        if (!m_frames.empty())
            emitRun(readRun(kQuoted));
        value = readSource();
        if (value == kEnd && m_frames.empty())
            throw ScriptException_UnexpectedEndOfFile(start.c_str());
        // Meant: the byte is taken as signed, so 0xAE is negative and vanishes from literals.
        emit(static_cast<signed char>(value));
    } while (value != '"');
}

/// The line feed at its end is kept.
void ScriptPreprocessor::skipLineComment() {
    int value = 0;
    do {
        readRun(kQuoted);
        value = readSource();
    } while (value != '\n' && value != kEnd);
    emit(value);
}

/// Comments nest. Meant: the character after the end of the outermost one is lost.
void ScriptPreprocessor::skipBlockComment() {
    Place const start = place();
    advanceSource();
    advanceSource();
    int value = readSource();
    for (int depth = 1; depth > 0;) {
        int const previous = std::exchange(value, readSource());
        if (previous == '/' && value == '*') {
            ++depth;
        } else if (previous == '*' && value == '/') {
            value = readSource();
            --depth;
        } else if (value != kEnd) {
            readSame(value);
        }
        if (depth > 0 && value == kEnd)
            throw ScriptPreprocessorException_CommentNotTerminated(lineOf(start.line), start.name->c_str());
    }
    m_placeChanged = m_placeChanged || place().line != start.line;
}

/// Reads on in a comment as long as nothing begins or ends there: the same `*` or `/` again, or, after any
/// other character, up to the next of these two.
void ScriptPreprocessor::readSame(int character) {
    SourceFrame& frame = m_frames.back();
    std::string_view const rest = frame.text.substr(frame.position);
    bool const isMark = character == '*' || character == '/';
    std::size_t length =
        isMark ? std::min(rest.find_first_not_of(static_cast<char>(character)), rest.size()) : 0;
    while (!isMark && length < rest.size() && isOfKind(rest[length], kCommented))
        ++length;
    frame.position += length;
}

/// A macro replaces a whole word. Macros in the replacement are not replaced.
void ScriptPreprocessor::expandIdentifier() {
    std::string_view const word = readRun(kWord);
    auto const macro = m_macros.find(word);
    emitRun(macro != m_macros.end() ? std::string_view(macro->second) : word);
}

// Directives.

void ScriptPreprocessor::handleDirective() {
    Place const start = place();
    std::size_t const depth = m_frames.back().depth;
    advanceSource();
    m_placeChanged = true; // its line feed is left out
    while (peekSource(0) == ' ' || peekSource(0) == '\t' || peekSource(0) == '\0')
        advanceSource();
    std::string text;
    for (int value = 0; value != '\n' && value != kEnd;) {
        if (!m_frames.empty())
            text += readRun(kQuoted);
        value = readSource();
        if (value != '\n' && value != kEnd && value != '\r')
            text += static_cast<char>(value);
    }

    // Meant: this is the next line when the directive ends with a line feed. At the end of all files it is
    // the directive's own.
    Place const reported = m_frames.empty() ? start : place();
    Directive const directive{splitWords(text), reported, depth};
    if (!m_budget.spend(kDirectiveWork))
        throwTooLarge(reported);
    std::string const keyword = text.substr(0, text.find_first_of(" \t"));
    if (keyword == "include")
        include(directive);
    else if (keyword == "define")
        defineMacro(directive);
    else if (keyword == "undef")
        undefineMacro(directive);
    else
        throw ScriptPreprocessorException_UnknownDirective(keyword.c_str(), reported.name->c_str(),
                                                           lineOf(reported.line));
}

void ScriptPreprocessor::requireWords(Directive const& directive, std::size_t count) const {
    if (directive.words.size() < count)
        throw ScriptPreprocessorException_MissingArgument(directive.words.front().c_str(),
                                                          directive.reported.name->c_str(),
                                                          lineOf(directive.reported.line));
}

/// The included file becomes the frame being read, so it is read whole before the rest of this one.
void ScriptPreprocessor::include(Directive const& directive) {
    requireWords(directive, 2);
    std::string name = directive.words[1];
    if (name.starts_with('"'))
        name.erase(0, 1);
    if (name.ends_with('"'))
        name.pop_back();
    NamedSource const& source = sourceOf(name);
    leaveChainBelow(directive.depth);
    if (source.second->entries == kMostEntries)
        throw ScriptPreprocessorException_IncludeLoop(name.c_str(), directive.reported.name->c_str(),
                                                      lineOf(directive.reported.line));
    if (!m_budget.spend(kInclusionWork + source.second->text.size()))
        throwTooLarge(directive.reported);
    pushFile(source);
}

/// Forgets the files that the one at that depth has included: they have been read.
void ScriptPreprocessor::leaveChainBelow(std::size_t depth) {
    for (; m_chain.size() > depth + 1; m_chain.pop_back())
        --m_chain.back()->entries;
}

/// The replacement is one word. What follows it is ignored.
void ScriptPreprocessor::defineMacro(Directive const& directive) {
    requireWords(directive, 3);
    if (!m_macros.emplace(directive.words[1], directive.words[2]).second)
        throw ScriptPreprocessorException_AlreadyDefined(
            directive.words[1].c_str(), directive.reported.name->c_str(), lineOf(directive.reported.line));
}

void ScriptPreprocessor::undefineMacro(Directive const& directive) {
    requireWords(directive, 2);
    m_macros.erase(directive.words[1]);
}

// The output: writing it, and telling the places in it.

void ScriptPreprocessor::emit(int value) {
    if (value < 0)
        return; // kEnd, or a byte that copyStringLiteral has taken as signed
    emitPlace();
    m_output += static_cast<char>(value);
}

/// For text without line feeds.
void ScriptPreprocessor::emitRun(std::string_view text) {
    if (text.empty())
        return;
    emitPlace();
    m_output += text;
}

/// Marks the place of the next character unless it follows from what was written. Of a line feed, that is the
/// line behind it. Meant: a name counts at each of its marks.
void ScriptPreprocessor::emitPlace() {
    if (!m_placeChanged)
        return;
    Place const next = place();
    if (m_marks.empty() || m_marks.back().place.name != next.name)
        m_budget.hold(next.name->size());
    m_marks.push_back({m_output.size(), next});
    m_placeChanged = false;
}

ScriptPreprocessor::Place ScriptPreprocessor::seenPlace() const {
    auto const next =
        std::upper_bound(m_marks.begin(), m_marks.end(), m_seen - 1,
                         [](std::size_t position, Mark const& mark) { return position < mark.position; });
    Mark const& mark = *std::prev(next);
    std::size_t const begin = mark.position + 1;
    return {mark.place.line + lineFeeds(std::string_view(m_output).substr(begin, m_seen - begin)),
            mark.place.name};
}

std::string ScriptPreprocessor::getFileName() const { return m_seen > 0 ? *seenPlace().name : std::string(); }

int ScriptPreprocessor::getLine() const { return m_seen > 0 ? lineOf(seenPlace().line) : 0; }

} // namespace Zel
