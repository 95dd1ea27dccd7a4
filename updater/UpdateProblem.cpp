#include "updater/UpdateProblem.h"

#include <QtGlobal>

#include <array>
#include <utility>

namespace tidewell {

namespace {

using enum UpdateProblem;

constexpr auto sentences = std::to_array<std::pair<UpdateProblem, const char*>>({
    {broken, QT_TRANSLATE_NOOP("SPUStandardUserDriver",
                               "A part of this program is missing or broke down.")},
    {unreachable,
     QT_TRANSLATE_NOOP("SPUStandardUserDriver", "The update server cannot be reached. Check the "
                                                "connection to the internet and try again.")},
    {untrusted,
     QT_TRANSLATE_NOOP("SPUStandardUserDriver", "The update server could not prove that it is the "
                                                "right one. Nothing was downloaded from it.")},
    {refused,
     QT_TRANSLATE_NOOP("SPUStandardUserDriver",
                       "The update server does not have what was asked for. Try again later.")},
    {badRedirect,
     QT_TRANSLATE_NOOP("SPUStandardUserDriver", "The update server points to a place that is not "
                                                "safe. Nothing was downloaded from there.")},
    {timedOut, QT_TRANSLATE_NOOP("SPUStandardUserDriver",
                                 "The update server takes too long to answer. Try again later.")},
    {unsignedFeed,
     QT_TRANSLATE_NOOP(
         "SPUStandardUserDriver",
         "The list of versions was not made by the developers of this program, or was "
         "changed on its way. Nothing in it was used.")},
    {oldFeed, QT_TRANSLATE_NOOP("SPUStandardUserDriver",
                                "The update server sent an old list of versions. Try again later, "
                                "and check that the date of this computer is right.")},
    {badFeed, QT_TRANSLATE_NOOP("SPUStandardUserDriver",
                                "The update server sent a list of versions that cannot be read.")},
    {wrongLength,
     QT_TRANSLATE_NOOP(
         "SPUStandardUserDriver",
         "The downloaded file is not complete, or is not the right one. It was deleted.")},
    {wrongSignature, QT_TRANSLATE_NOOP("SPUStandardUserDriver",
                                       "The downloaded file was not made by the developers of this "
                                       "program, or was changed on its way. It was deleted.")},
    {cannotStore,
     QT_TRANSLATE_NOOP("SPUStandardUserDriver",
                       "The update could not be saved. There may be no space left on the disk.")},
    {cannotReplace, QT_TRANSLATE_NOOP("SPUStandardUserDriver",
                                      "The program's file could not be replaced. You may not have "
                                      "the right to change the folder that it is in.")},
    {noHandler,
     QT_TRANSLATE_NOOP("SPUStandardUserDriver",
                       "The update was downloaded, but there is no program here to open it with.")},
    {notStarted,
     QT_TRANSLATE_NOOP("SPUStandardUserDriver", "This program was not set up for updates.")},
});

class UpdateProblems final : public std::error_category {
public:
    const char* name() const noexcept override { return "update"; }
    std::string message(int problem) const override {
        for (const auto& [known, sentence] : sentences) {
            if (static_cast<int>(known) == problem) {
                return sentence;
            }
        }
        return "unknown";
    }
};

} // namespace

const std::error_category& updateProblems() {
    static const UpdateProblems category;
    return category;
}

} // namespace tidewell
