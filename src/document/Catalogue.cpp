#include "Catalogue.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>

#include "CPwrSys.h"
#include "RaisedError.h"
#include "Sizable.h"

namespace genvara {
namespace {

/// What is kept, read by the first who asks.
template <typename Rows, typename Query>
const Rows& Once(std::optional<Rows>& kept, Query query) {
    if (!kept) {
        kept = query();
    }
    return *kept;
}

/// A database that can be opened and not be used has no number of its own to tell.
[[noreturn]] void RaiseUnfit(const std::filesystem::path& file, const RaisedError& failure) {
    std::string reason = failure.Description();
    if (reason.ends_with('.')) {
        reason.pop_back();
    }
    throw RaisedError(
        0, failure.Source(),
        fmt::format("The genset database {} is unfit: {}; \"catalog check\" lists what is wrong.",
                    file.string(), reason));
}

}  // namespace

std::string Catalogue::WhyUnfit(const std::filesystem::path& file) {
    try {
        Catalogue catalogue(file);
        (void)catalogue.m_database.Properties();
        (void)catalogue.Connections();
        return {};
    } catch (const RaisedError& failure) {
        const std::string& words = failure.Description();
        return words.find(file.string()) != std::string::npos
                   ? words
                   : fmt::format("The genset database {} cannot be used: {}.", file.string(), words);
    }
}

std::string Catalogue::WhatIsMissing() {
    try {
        m_database.RequireSchema();
        return {};
    } catch (const RaisedError& failure) {
        return failure.Description();
    }
}

void Catalogue::RequireFit() {
    try {
        m_database.RequireSchema();
        (void)m_database.Properties();
        ReadMotorConversions();
        (void)Connections();
    } catch (const RaisedError& failure) {
        if (failure.Number() == 0) {
            throw;  // says already what is missing where
        }
        RaiseUnfit(File(), failure);
    }
}

const std::vector<ConnectionRecord>& Catalogue::Connections() {
    return Once(m_connections, [this] { return m_database.Connections(); });
}

const std::vector<std::int32_t>& Catalogue::VoltagesLL() {
    return Once(m_volts, [this] { return m_database.VoltagesLL(); });
}

const std::vector<CodeLetterRecord>& Catalogue::MotorCodeLetters() {
    return Once(m_codeLetters, [this] { return m_database.MotorCodeLetters(); });
}

const std::vector<double>& Catalogue::MotorStartingMultipliers() {
    return Once(m_multipliers, [this] { return m_database.MotorStartingMultipliers(); });
}

std::optional<std::int32_t> Catalogue::PhasesOf(std::int32_t connectCode) {
    const std::vector<ConnectionRecord>& connections = Connections();
    const auto found = std::ranges::find(connections, connectCode, &ConnectionRecord::ID);
    return found == connections.end() ? std::nullopt : std::optional(found->phases);
}

void Catalogue::FollowConnection(CPwrSys& site) {
    genvara::FollowConnection(site, [this](std::int32_t code) { return PhasesOf(code); });
}

}  // namespace genvara
