#include <fmt/format.h>
#include <pybind11/stl.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "AllRecommended.h"
#include "Bindings.h"
#include "LimitArguments.h"
#include "Paths.h"
#include "PropertyText.h"
#include "PythonStudy.h"
#include "SetMembers.h"
#include "Values.h"

namespace genvara::python {
namespace {

namespace py = pybind11;

/// What is counted of a set, or of all sets of a model: in how many trials one does the job, and in how many
/// it is the first of the list.
struct Tally {
    std::int64_t does = 0;
    std::int64_t first = 0;
};

struct SetKey {
    std::string model;
    std::string alternator;
    std::string engine;

    auto operator<=>(const SetKey&) const = default;  // NOLINT(modernize-use-nullptr): there is none to use
};

/// What a trial came to.
struct Outcome {
    std::optional<std::string> error;
    std::vector<std::size_t> outside;  ///< positions of the paths whose values are out of range
    std::optional<ChosenSet> first;
    std::optional<Tightest> tightest;
    std::size_t count = 0;  ///< of recommended sets
};

/// Counts the sets of trials by their rows, and names them at the end.
class SetCounter {
  public:
    void Take(const AllSizing& sizing) {
        if (sizing.sets.empty()) {
            return;
        }
        Rows& rows = RowsOf(sizing.candidates);
        ++m_trial;
        ++rows.tallies[sizing.sets.front()].first;
        ++rows.models[rows.modelOf[sizing.sets.front()]].tally.first;
        for (const std::size_t set : sizing.sets) {
            ++rows.tallies[set].does;
            Model& model = rows.models[rows.modelOf[set]];
            if (model.lastTrial != m_trial) {
                model.lastTrial = m_trial;
                ++model.tally.does;
            }
        }
    }

    [[nodiscard]] std::map<SetKey, Tally> Sets() const {
        std::map<SetKey, Tally> sets;
        for (const auto& [candidates, rows] : m_rows) {
            for (std::size_t i = 0; i < rows.tallies.size(); ++i) {
                if (rows.tallies[i].does > 0) {
                    Add(sets[KeyOf(*candidates, i)], rows.tallies[i]);
                }
            }
        }
        return sets;
    }

    [[nodiscard]] std::map<std::string, Tally> Models() const {
        std::map<std::string, Tally> models;
        for (const auto& [candidates, rows] : m_rows) {
            for (const Model& model : rows.models) {
                if (model.tally.does > 0) {
                    Add(models[model.name], model.tally);
                }
            }
        }
        return models;
    }

  private:
    struct Model {
        std::string name;
        Tally tally{};
        std::int64_t lastTrial = 0;
    };
    struct Rows {
        std::vector<Tally> tallies;
        std::vector<std::size_t> modelOf;
        std::vector<Model> models;
    };

    static void Add(Tally& sum, const Tally& part) {
        sum.does += part.does;
        sum.first += part.first;
    }

    static std::string TextOf(const DbText& text) {
        return text.IsNull() ? std::string() : text.Text("SetCounter");
    }

    [[nodiscard]] static SetKey KeyOf(const SiteCandidates& candidates, std::size_t row) {
        const GensetTexts& texts = candidates.Texts(row);
        const std::int32_t alternator = candidates.Rows()[row].AltModel.Integer("SetCounter");
        return {.model = TextOf(texts.GensetModel),
                .alternator = candidates.Alternators()[static_cast<std::size_t>(alternator)].Get().ModelNum,
                .engine = TextOf(texts.EngineModel)};
    }

    Rows& RowsOf(const std::shared_ptr<const SiteCandidates>& candidates) {
        const auto [found, isNew] = m_rows.try_emplace(candidates);
        Rows& rows = found->second;
        if (isNew) {
            rows.tallies.resize(candidates->Rows().size());
            std::map<std::string, std::size_t> known;
            for (std::size_t i = 0; i < rows.tallies.size(); ++i) {
                const std::string name = TextOf(candidates->Texts(i).GensetModel);
                const auto [model, isFirst] = known.try_emplace(name, rows.models.size());
                if (isFirst) {
                    rows.models.push_back({.name = name});
                }
                rows.modelOf.push_back(model->second);
            }
        }
        return rows;
    }

    std::map<std::shared_ptr<const SiteCandidates>, Rows> m_rows;
    std::int64_t m_trial = 0;
};

/// Trials of one project: some of its members take other values in each. Of one thread.
class Trials {
  public:
    /// @param probe values of the first paths in some trial: one may bring the member of the next.
    Trials(const PythonProject& project, CataloguePtr catalogue, const DesignLimits& limits,
           std::vector<std::string> paths, const py::sequence& probe)
        : m_study(project, std::move(catalogue), limits), m_paths(std::move(paths)) {
        StudyProject probed = m_study.Project();
        for (std::size_t i = 0; i < m_paths.size(); ++i) {
            m_facts.push_back(FactsAt(probed, m_paths[i]));
            if (i < probe.size()) {
                TryChange(probed, {m_paths[i], FromPython(m_facts[i], probe[i])}, m_study.Tables().rules);
            }
        }
    }

    [[nodiscard]] std::vector<std::string_view> Types() const {
        std::vector<std::string_view> types;
        for (const PropertyFacts& facts : m_facts) {
            types.push_back(TypeName(facts.type));
        }
        return types;
    }

    /// The value as a member has it, and as a table shows it: a code by its name.
    [[nodiscard]] py::object Converted(std::size_t column, const py::handle& value) const {
        const PropertyFacts& facts = m_facts.at(column);
        const PropertyValue converted = FromPython(facts, value);
        return facts.type == PropertyType::Code ? py::str(ValueText(facts, converted))
                                                : ToPython(facts, converted);
    }

    /// Sizes a trial a row, each with a value for each path.
    [[nodiscard]] py::tuple Run(const py::sequence& rows) const {
        std::vector<std::vector<PropertyValue>> trials;
        trials.reserve(rows.size());
        for (const py::handle row : rows) {
            trials.push_back(ValuesOf(py::reinterpret_borrow<py::sequence>(row)));
        }
        std::vector<Outcome> outcomes;
        SetCounter counter;
        {
            const py::gil_scoped_release others;
            outcomes = Sized(trials, counter);
        }
        return py::make_tuple(RowsOf(outcomes), TalliesOf(counter.Sets()), TalliesOf(counter.Models()));
    }

  private:
    [[nodiscard]] std::vector<PropertyValue> ValuesOf(const py::sequence& row) const {
        if (row.size() != m_facts.size()) {
            throw py::value_error("there are not as many values as paths");
        }
        std::vector<PropertyValue> values;
        for (std::size_t i = 0; i < m_facts.size(); ++i) {
            values.push_back(FromPython(m_facts[i], row[i]));
        }
        return values;
    }

    [[nodiscard]] std::vector<Outcome> Sized(const std::vector<std::vector<PropertyValue>>& trials,
                                             SetCounter& counter) const {
        AllSizer sizer(m_study.Tables());
        std::vector<Outcome> outcomes;
        outcomes.reserve(trials.size());
        for (const std::vector<PropertyValue>& values : trials) {
            Outcome& outcome = outcomes.emplace_back();
            try {
                SizeOne(values, sizer, counter, outcome);
            } catch (const RaisedError& failure) {
                outcome.error = failure.Description();
            }
        }
        return outcomes;
    }

    void SizeOne(const std::vector<PropertyValue>& values, AllSizer& sizer, SetCounter& counter,
                 Outcome& outcome) const {
        StudyProject changed = m_study.Project();
        for (std::size_t i = 0; i < values.size(); ++i) {
            ChangeOne(changed, i, values[i], outcome);
        }
        if (outcome.error) {
            return;
        }
        AllSizing sizing = sizer.Size(Reopened(changed, m_study.Tables().rules));
        counter.Take(sizing);
        outcome.first = std::move(sizing.first);
        outcome.tightest = sizing.tightest;
        outcome.count = sizing.sets.size();
    }

    /// A value that nobody may enter is noted and not taken; the first of them is the error of the trial.
    void ChangeOne(StudyProject& changed, std::size_t path, const PropertyValue& value,
                   Outcome& outcome) const {
        const PathTarget target = FollowPath(m_paths[path], RootsOf(changed));
        const PropertyFacts& facts = FactsOf(target);
        try {
            (void)ParseValue(facts, ValueText(facts, value));
        } catch (const RaisedError& refusal) {
            outcome.outside.push_back(path);
            outcome.error = outcome.error.value_or(refusal.Description());
            return;
        }
        ChangeMember(target, value, changed.powerSystem, m_study.Tables().rules);
    }

    /// A tuple a trial: error, positions of the paths that are out of range, number of recommended sets;
    /// model, alternator, engine, nominal and derated rating of the first; its tightest test, step and
    /// margin.
    [[nodiscard]] static py::list RowsOf(const std::vector<Outcome>& outcomes) {
        py::list rows;
        for (const Outcome& outcome : outcomes) {
            const auto tightest = NamedTightest(outcome.tightest);
            const auto ofSet = [&outcome](auto member) {
                return outcome.first ? py::cast((*outcome.first).*member) : py::object(py::none());
            };
            const auto ofTightest = [&tightest](auto member) {
                return tightest ? py::cast((*tightest).*member) : py::object(py::none());
            };
            rows.append(py::make_tuple(
                outcome.error, outcome.outside, outcome.count, ofSet(&ChosenSet::ModelNum),
                ofSet(&ChosenSet::AltNum), ofSet(&ChosenSet::EngineNum), ofSet(&ChosenSet::NominalRating),
                ofSet(&ChosenSet::DeratedRating), ofTightest(&TightestTest::name),
                ofTightest(&TightestTest::stepNumber), ofTightest(&TightestTest::margin)));
        }
        return rows;
    }

    [[nodiscard]] static py::list TalliesOf(const std::map<SetKey, Tally>& sets) {
        py::list rows;
        for (const auto& [key, tally] : sets) {
            rows.append(py::make_tuple(key.model, key.alternator, key.engine, tally.does, tally.first));
        }
        return rows;
    }

    [[nodiscard]] static py::list TalliesOf(const std::map<std::string, Tally>& models) {
        py::list rows;
        for (const auto& [model, tally] : models) {
            rows.append(py::make_tuple(model, tally.does, tally.first));
        }
        return rows;
    }

    PythonStudy m_study;
    std::vector<std::string> m_paths;
    std::vector<PropertyFacts> m_facts;
};

/// The limits as their attributes by name.
DesignLimits LimitsOfDict(const py::dict& limits) {
    return LimitsOf("chances", py::kwargs(limits));
}

}  // namespace

void BindTrials(py::module_& module) {
    py::class_<Trials> trials(module, "_Trials",
                              "Trials of one project, which differ in some of its members.");
    MakeNewBy(
        trials,
        [](const py::object& /*type*/, const PythonProject& project, const CataloguePtr& catalogue,
           const py::dict& limits, const std::vector<std::string>& paths, const py::sequence& probe) {
            if (!catalogue) {
                throw py::type_error("there is no catalogue");
            }
            return std::make_unique<Trials>(project, catalogue, LimitsOfDict(limits), paths, probe);
        },
        py::arg("project").none(false), py::arg("catalogue").none(false), py::arg("limits"), py::arg("paths"),
        py::arg("probe"));
    trials.def_property_readonly("types", &Trials::Types)
        .def("converted", &Trials::Converted)
        .def("run", &Trials::Run);
}

}  // namespace genvara::python
