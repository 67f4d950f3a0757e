#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <thread>

#include "themes/hueloom_theme_collection_v1.h"

namespace vl1 {
namespace {

std::shared_ptr<const hueloom_theme_v1> theme_of(uint32_t uid, uint32_t version)
{
    auto theme = std::make_shared<hueloom_theme_v1>();
    theme->uid = uid;
    theme->version = version;
    theme->name = "theme " + std::to_string(uid) + " v" + std::to_string(version);
    return theme;
}

TEST(ThemeCollection, AddedThemesReplaceByUidAndTakePrecedenceOverTheDefault)
{
    hueloom_theme_collection_v1 collection;
    EXPECT_EQ(collection.get_theme_by_uid(1), nullptr);
    const auto builtin = theme_of(1, 3);
    collection.set_default_theme(builtin);
    collection.set_default_theme(nullptr);
    EXPECT_EQ(collection.get_theme_by_uid(1), builtin);
    EXPECT_EQ(collection.get_theme_names().at(1), "theme 1 v3");

    collection.add_or_replace_theme(theme_of(1, 4));
    const auto replacement = theme_of(1, 5);
    collection.add_or_replace_theme(replacement);
    collection.add_or_replace_theme(nullptr);
    collection.add_or_replace_theme(theme_of(7, 1));
    collection.remove_theme(12345);
    EXPECT_EQ(collection.get_theme_by_uid(1), replacement);
    EXPECT_EQ(collection.get_default_theme(), builtin);
    EXPECT_EQ(collection.get_theme_names(),
              (std::unordered_map<uint32_t, std::string>{{1, "theme 1 v5"}, {7, "theme 7 v1"}}));
    EXPECT_EQ(collection.get_theme_versions(), (std::unordered_map<uint32_t, uint32_t>{{1, 5}, {7, 1}}));
    EXPECT_EQ(collection.get_theme_version(1), 5u);

    // Removing the uid takes it out of the lists; the default object is still found.
    collection.remove_theme(1);
    EXPECT_EQ(collection.get_theme_by_uid(1), builtin);
    EXPECT_EQ(collection.get_theme_names().count(1), 0u);
    EXPECT_EQ(collection.get_theme_version(1), 0u);
}

TEST(ThemeCollection, ManyReadersAndOneWriterSeeWholeThemes)
{
    hueloom_theme_collection_v1 collection;
    collection.set_default_theme(theme_of(0, 1));
    constexpr uint32_t uids = 16;
    constexpr uint32_t rounds = 5000;
    std::atomic<bool> writing{true};
    std::atomic<int> reading{0};
    std::atomic<int> torn{0};

    std::vector<std::thread> readers;
    for (int r = 0; r < 4; ++r) {
        readers.emplace_back([&, r] {
            uint32_t uid = static_cast<uint32_t>(r);
            ++reading;
            while (writing.load()) {
                uid = (uid + 1) % uids;
                if (const auto theme = collection.get_theme_by_uid(uid)) {
                    if (theme->uid != uid || theme->name != theme_of(uid, theme->version)->name)
                        ++torn;
                }
                for (const auto& [listed, name] : collection.get_theme_names())
                    if (name.rfind("theme " + std::to_string(listed) + " v", 0) != 0)
                        ++torn;
            }
        });
    }
    while (reading.load() < static_cast<int>(readers.size()))
        std::this_thread::yield();
    std::map<uint32_t, uint32_t> model;  // uid -> version the collection must end with
    for (uint32_t round = 1; round <= rounds; ++round) {
        collection.add_or_replace_theme(theme_of(round % uids, round));
        model[round % uids] = round;
        if (round % 5 == 0) {
            collection.remove_theme((round * 7) % uids);
            model.erase((round * 7) % uids);
        }
    }
    writing = false;
    for (auto& reader : readers)
        reader.join();

    EXPECT_EQ(torn.load(), 0);
    for (uint32_t uid = 1; uid < uids; ++uid) {
        const auto theme = collection.get_theme_by_uid(uid);
        EXPECT_EQ(theme ? theme->version : 0u, model.contains(uid) ? model[uid] : 0u) << uid;
    }
}

}  // namespace
}  // namespace vl1
