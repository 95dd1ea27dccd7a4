#include "updater/UpdateProblem.h"

#include <string>

namespace tidewell {

const std::error_category& updateProblems() {
    class Category final : public std::error_category {
    public:
        const char* name() const noexcept override { return "update"; }
        std::string message(int problem) const override {
            return "update problem " + std::to_string(problem);
        }
    };
    static const Category category;
    return category;
}

} // namespace tidewell
