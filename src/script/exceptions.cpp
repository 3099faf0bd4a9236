// The messages of the exceptions of scripts: each stands here and nowhere else. One table of formats makes
// those that name a place in a script, and finds the place in them again.

#include <zel/script.h>

#include <algorithm>
#include <charconv>
#include <string_view>
#include <typeinfo>

namespace Zel {
namespace {

/// How the messages of one class are made. The last %s is the name of the file, %d is the line.
struct Format {
    std::type_info const& exception;
    char const* text;
};

constexpr Format kFormats[] = {
    {typeid(ScriptException_SyntaxError), "Syntax error in file %s at line %d"},
    {typeid(ScriptException_UnexpectedEndOfFile), "Unexpected end of file in script %s"},
    {typeid(ScriptException_BracketCountMismatch), "The count of %s characters does not match in %s"},
    {typeid(ScriptException_InvalidInterval), "Interval %s has an invalid range in file %s at line %d"},
    {typeid(ScriptPreprocessorException_MissingArgument),
     "Missing argument in preprocessor directive \"#%s\" in %s on line %d"},
    {typeid(ScriptPreprocessorException_UnknownDirective),
     "Unknown preprocessor directive \"#%s\" in %s on line %d"},
    {typeid(ScriptPreprocessorException_AlreadyDefined),
     "Preprocessor macro \"%s\" already defined in %s on line %d"},
    {typeid(ScriptPreprocessorException_CommentNotTerminated),
     "Comment beginning on line %d in %s is not terminated"},
    {typeid(ScriptPreprocessorException_InvalidCharacter),
     "Invalid character '%c' (0x%02x) in %s on line %d"},
    {typeid(ScriptPreprocessorException_IncludeLoop), "File %s includes itself without end in %s on line %d"},
    {typeid(ScriptPreprocessorException_TooLarge), "Expansion grows too large in %s on line %d"},
};

/// The format of the exception's class; empty when its messages name no place.
char const* formatOf(Exception const& exception) {
    for (Format const& format : kFormats)
        if (format.exception == typeid(exception))
            return format.text;
    return "";
}

/// The words of a format that stand before one of its conversions, back to the conversion before that.
std::string_view wordsBefore(std::string_view format, std::size_t conversion) {
    std::string_view const head = format.substr(0, conversion);
    std::size_t const previous = head.rfind('%');
    return previous == std::string_view::npos ? head : head.substr(head.find_first_of("sdcx", previous) + 1);
}

} // namespace

// The file's name may hold any words, those of the format, too. What stands before it, a macro for one, has
// no blanks and so holds none. So the words before the name are sought from the front, those behind it from
// the back.
std::optional<ScriptPlace> findScriptPlace(Exception const& exception) {
    constexpr std::size_t kLongestMessage = 1023;
    std::string_view const message = exception.getError();
    std::string_view const format = formatOf(exception);
    if (format.empty() || message.size() == kLongestMessage)
        return std::nullopt;

    constexpr std::size_t kNone = std::string_view::npos;
    std::size_t const file = format.rfind("%s");
    std::size_t const line = format.find("%d");
    std::string_view const before = wordsBefore(format, file);
    std::string_view const behind = format.substr(file + 2, line > file ? line - (file + 2) : kNone);
    std::size_t const found = message.find(before);
    std::size_t const end = behind.empty() ? message.size() : message.rfind(behind);
    std::size_t const begin = found + before.size();
    if (found == kNone || end == kNone || end < begin)
        return std::nullopt; // another message was set

    ScriptPlace place{std::string(message.substr(begin, end - begin))};
    // With no %d, this is the end of the message.
    std::size_t const number = std::min(line < file ? line : end + behind.size(), message.size());
    std::from_chars(message.data() + number, message.data() + message.size(), place.line);
    return place;
}

ScriptException_SyntaxError::ScriptException_SyntaxError(char const* fileName, int line) {
    setError(formatOf(*this), fileName, line);
}

ScriptException_UnexpectedEndOfFile::ScriptException_UnexpectedEndOfFile(char const* fileName) {
    setError(formatOf(*this), fileName);
}

ScriptException_BracketCountMismatch::ScriptException_BracketCountMismatch(char const* fileName,
                                                                           char const* characters) {
    setError(formatOf(*this), characters, fileName);
}

ScriptException_InvalidInterval::ScriptException_InvalidInterval(char const* fileName, int line,
                                                                 char const* variable) {
    setError(formatOf(*this), variable, fileName, line);
}

// Queries. The program that asks is wrong, and no place in the script.

ScriptException_BlockNotFound::ScriptException_BlockNotFound(char const* fileName, char const* block) {
    setError("Block %s not found in %s", block, fileName);
}

ScriptException_TypeMismatch::ScriptException_TypeMismatch(char const* fileName, char const* variable) {
    setError("Variable %s type mismatch in %s", variable, fileName);
}

ScriptException_UndefinedVariable::ScriptException_UndefinedVariable(char const* fileName, char const* block,
                                                                     char const* variable) {
    setError("Undefined variable %s in %s in block %s", variable, fileName, block);
}

// The preprocessor.

ScriptPreprocessorException_MissingArgument::ScriptPreprocessorException_MissingArgument(
    char const* directive, char const* fileName, int line) {
    setError(formatOf(*this), directive, fileName, line);
}

ScriptPreprocessorException_UnknownDirective::ScriptPreprocessorException_UnknownDirective(
    char const* directive, char const* fileName, int line) {
    setError(formatOf(*this), directive, fileName, line);
}

ScriptPreprocessorException_AlreadyDefined::ScriptPreprocessorException_AlreadyDefined(char const* macro,
                                                                                       char const* fileName,
                                                                                       int line) {
    setError(formatOf(*this), macro, fileName, line);
}

ScriptPreprocessorException_CommentNotTerminated::ScriptPreprocessorException_CommentNotTerminated(
    int line, char const* fileName) {
    setError(formatOf(*this), line, fileName);
}

ScriptPreprocessorException_InvalidCharacter::ScriptPreprocessorException_InvalidCharacter(
    int character, char const* fileName, int line) {
    setError(formatOf(*this), character, static_cast<unsigned>(character), fileName, line);
}

ScriptPreprocessorException_IncludeLoop::ScriptPreprocessorException_IncludeLoop(char const* included,
                                                                                 char const* fileName,
                                                                                 int line) {
    setError(formatOf(*this), included, fileName, line);
}

ScriptPreprocessorException_TooLarge::ScriptPreprocessorException_TooLarge(char const* fileName, int line) {
    setError(formatOf(*this), fileName, line);
}

} // namespace Zel
