#include "mdlUtility.h"

#include <cmath>
#include <cstddef>

#include "ErrorNumbers.h"
#include "LanguageErrors.h"
#include "RaisedError.h"

namespace genvara {
namespace {

/// The half turn that `ArcCos` answers from -1 downward: fifteen digits of pi, not the nearest double.
constexpr double kHalfTurn = 3.14159265358979;

void CheckTables(const std::vector<double>& X, const std::vector<double>& Y) {
    if (X.size() != Y.size()) {
        throw RaisedError(errors::FromBase(2), "InterpolateXY", "Value array are not the same size.");
    }
    if (X.size() < 2) {
        throw RaisedError(errors::FromBase(3), "InterpolateXY", "Value arrays have only one point.");
    }
}

}  // namespace

double InterpolateXY(double x, const std::vector<double>& X, const std::vector<double>& Y,
                     std::string_view member) {
    CheckTables(X, Y);
    const std::size_t n = X.size() - 1;
    const auto slope = [&](std::size_t i) { return Quotient(Y[i] - Y[i - 1], X[i] - X[i - 1], member); };
    if (x < X[0]) {
        return Finite(Y[0] - slope(1) * (X[0] - x), member);
    }
    if (x > X[n]) {
        return Finite(Y[n] + slope(n) * (x - X[n]), member);
    }
    for (std::size_t i = 0; i <= n; ++i) {
        if (x == X[i]) {
            return Y[i];
        }
        if (x < X[i]) {
            return Finite(Y[i - 1] + slope(i) * (x - X[i - 1]), member);
        }
    }
    RaiseOverflow(member);  // only a value that compares with nothing comes here
}

double ArcCos(double c, std::string_view member) {
    if (c == 1.0) {
        return 0.0;
    }
    if (c <= -1.0) {
        return kHalfTurn;
    }
    return std::atan(-c / SquareRoot(-c * c + 1.0, member)) + 2.0 * std::atan(1.0);
}

}  // namespace genvara
