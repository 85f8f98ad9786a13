#pragma once

#include "base/Uuid.h"
#include "diagnostics/ConsoleSink.h"
#include "store/ActivityRecord.h"
#include "store/ModelContext.h"

#include <array>
#include <optional>
#include <string_view>

/// What `DataCleanupService` does, step by step.
namespace quorvane::DataCleanupPasses {

/// What a pass works on, at one instant.
struct Scope {
    ModelContext& context;
    ConsoleSink& console;
    Date now;
    std::optional<Date> cutoff{};  ///< look at records from then on and at open ones; none: at all
    std::optional<Uuid> live{};    ///< the tracker's own open record, which none of them touches

    /// See `RecordHygiene`.
    [[nodiscard]] bool mayTouch(const ActivityRecord& record) const;
};

/// One pass. What it throws, a `StoreError`, belongs behind its `failure` line; its changes then stay unsaved.
struct Pass {
    std::string_view title;     ///< the line that stands before it; none if empty
    std::string_view failure;   ///< the beginning of a line
    bool (*run)(const Scope&);  ///< says whether it changed anything
};

/// Gives records that a crash left open their end, settled ones included: until then nobody knows how long they are.
bool endLeftOpenRecords(const Scope& scope);
bool removeAbnormalDurations(const Scope& scope);
bool removeFutureDates(const Scope& scope);
bool resolveOverlappingPairs(const Scope& scope);
bool mergeAdjacentRecords(const Scope& scope);

/// Short records join the one of the same application before or after them. Those without one are thrown away in favour
/// of the longest record nearby, whatever its application.
bool mergeShortRecords(const Scope& scope);

bool emptyOldTrash(const Scope& scope);

/// As `endLeftOpenRecords`, with lines of its own.
bool endActiveRecords(const Scope& scope);

inline constexpr std::array manualRun{
    Pass{"DataCleanupService: 检查未结束的记录...", "DataCleanupService: 处理未结束记录失败: ", endLeftOpenRecords},
    Pass{"DataCleanupService: 检查异常时间记录...",
         "DataCleanupService: 清理异常时间记录失败: ", removeAbnormalDurations},
    Pass{"DataCleanupService: 检查未来日期的记录...", "DataCleanupService: 清理未来日期记录失败: ", removeFutureDates},
    Pass{"DataCleanupService: 检查重叠记录...", "DataCleanupService: 清理重叠记录失败: ", resolveOverlappingPairs},
    Pass{"DataCleanupService: 检查相邻的相同应用记录...",
         "DataCleanupService: 合并相邻记录失败: ", mergeAdjacentRecords},
};

inline constexpr std::array backgroundRun{
    manualRun[0],
    manualRun[1],
    manualRun[2],
    manualRun[3],
    manualRun[4],
    Pass{"DataCleanupService: 开始智能合并短时间记录...",
         "DataCleanupService: 智能合并短时间记录失败: ", mergeShortRecords},
};

/// Ends a background run.
inline constexpr Pass oldTrash{"", "DataCleanupService: 清空废纸篓失败: ", emptyOldTrash};

inline constexpr Pass endingOfActiveRecords{"DataCleanupService: 结束所有活跃记录...",
                                            "DataCleanupService: 结束活跃记录失败: ", endActiveRecords};

}  // namespace quorvane::DataCleanupPasses
