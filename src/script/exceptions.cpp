// The messages of the exceptions of scripts: each stands here and nowhere else.

#include <zel/script.h>

namespace Zel {

ScriptException_SyntaxError::ScriptException_SyntaxError(char const* fileName, int line) {
    setError("Syntax error in file %s at line %d", fileName, line);
}

ScriptException_UnexpectedEndOfFile::ScriptException_UnexpectedEndOfFile(char const* fileName) {
    setError("Unexpected end of file in script %s", fileName);
}

ScriptException_BracketCountMismatch::ScriptException_BracketCountMismatch(char const* fileName,
                                                                           char const* characters) {
    setError("The count of %s characters does not match in %s", characters, fileName);
}

ScriptException_InvalidInterval::ScriptException_InvalidInterval(char const* fileName, int line,
                                                                 char const* variable) {
    setError("Interval %s has an invalid range in file %s at line %d", variable, fileName, line);
}

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

ScriptPreprocessorException_MissingArgument::ScriptPreprocessorException_MissingArgument(
    char const* directive, char const* fileName, int line) {
    setError("Missing argument in preprocessor directive \"#%s\" in %s on line %d", directive, fileName,
             line);
}

ScriptPreprocessorException_UnknownDirective::ScriptPreprocessorException_UnknownDirective(
    char const* directive, char const* fileName, int line) {
    setError("Unknown preprocessor directive \"#%s\" in %s on line %d", directive, fileName, line);
}

ScriptPreprocessorException_AlreadyDefined::ScriptPreprocessorException_AlreadyDefined(char const* macro,
                                                                                       char const* fileName,
                                                                                       int line) {
    setError("Preprocessor macro \"%s\" already defined in %s on line %d", macro, fileName, line);
}

ScriptPreprocessorException_CommentNotTerminated::ScriptPreprocessorException_CommentNotTerminated(
    int line, char const* fileName) {
    setError("Comment beginning on line %d in %s is not terminated", line, fileName);
}

ScriptPreprocessorException_InvalidCharacter::ScriptPreprocessorException_InvalidCharacter(
    int character, char const* fileName, int line) {
    setError("Invalid character '%c' (0x%02x) in %s on line %d", character, static_cast<unsigned>(character),
             fileName, line);
}

ScriptPreprocessorException_IncludeLoop::ScriptPreprocessorException_IncludeLoop(char const* included,
                                                                                 char const* fileName,
                                                                                 int line) {
    setError("File %s includes itself without end in %s on line %d", included, fileName, line);
}

ScriptPreprocessorException_TooLarge::ScriptPreprocessorException_TooLarge(char const* fileName, int line) {
    setError("Expansion grows too large in %s on line %d", fileName, line);
}

} // namespace Zel
