// A statement run with faults ignored: a fault inside it ends the statement and nothing
// else, as the clean-up paths of the download routines want.
#pragma once

#include <exception>

template <typename Statement>
void resumenext(Statement statement)
{
    try {
        statement();
    } catch (const std::exception&) {
    }
}
