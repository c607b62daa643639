#include "LanguageErrors.h"

#include <cmath>
#include <string>

#include "ErrorNumbers.h"
#include "RaisedError.h"

namespace genvara {

void RaiseOverflow(std::string_view member) {
    throw RaisedError(errors::kOverflow, std::string(member), "Overflow");
}

void RaiseSubscriptOutOfRange(std::string_view member) {
    throw RaisedError(errors::kSubscriptOutOfRange, std::string(member), "Subscript out of range");
}

void RaiseDivisionByZero(std::string_view member) {
    throw RaisedError(errors::kDivisionByZero, std::string(member), "Division by zero");
}

void RaiseTypeMismatch(std::string_view member) {
    throw RaisedError(errors::kTypeMismatch, std::string(member), "Type mismatch");
}

void RaiseInvalidArgument(std::string_view member) {
    throw RaisedError(errors::kInvalidArgument, std::string(member), "Invalid procedure call or argument");
}

double SquareRoot(double value, std::string_view member) {
    if (value < 0.0) {
        RaiseInvalidArgument(member);
    }
    return std::sqrt(Finite(value, member));
}

double Power(double base, double exponent, std::string_view member) {
    if (base == 0.0 && exponent < 0.0) {
        RaiseDivisionByZero(member);
    }
    const double result = std::pow(base, exponent);
    if (std::isnan(result)) {
        RaiseInvalidArgument(member);
    }
    return Finite(result, member);
}

}  // namespace genvara
