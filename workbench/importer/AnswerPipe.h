#pragma once

#include <string_view>

/// The standard output, taken away from everybody else: the library may print what it likes and disturbs no answer.
class AnswerPipe
{
public:
    AnswerPipe();
    AnswerPipe(const AnswerPipe &) = delete;
    AnswerPipe &operator=(const AnswerPipe &) = delete;

    /// Writes all of it. Ends the process where nobody reads any more.
    void write(std::string_view bytes);

private:
    int m_descriptor = -1;
};
