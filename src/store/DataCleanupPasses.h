#pragma once

#include "diagnostics/ConsoleSink.h"
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
};

/// One pass. What it throws, a `StoreError`, belongs behind its `failure` line; its changes then stay unsaved.
struct Pass {
    std::string_view title;    ///< the line that stands before it
    std::string_view failure;  ///< the beginning of a line
    void (*run)(const Scope&);
};

void removeAbnormalDurations(const Scope& scope);
void removeFutureDates(const Scope& scope);
void resolveOverlappingPairs(const Scope& scope);
void endForgottenRecords(const Scope& scope);
void mergeAdjacentRecords(const Scope& scope);

/// Throws short records away in favour of the longest one nearby, whatever its application.
void mergeShortRecords(const Scope& scope);

void endActiveRecords(const Scope& scope);

inline constexpr std::array manualRun{
    Pass{"DataCleanupService: 检查异常时间记录...",
         "DataCleanupService: 清理异常时间记录失败: ", removeAbnormalDurations},
    Pass{"DataCleanupService: 检查未来日期的记录...", "DataCleanupService: 清理未来日期记录失败: ", removeFutureDates},
    Pass{"DataCleanupService: 检查重叠记录...", "DataCleanupService: 清理重叠记录失败: ", resolveOverlappingPairs},
    Pass{"DataCleanupService: 检查未结束的记录...", "DataCleanupService: 处理未结束记录失败: ", endForgottenRecords},
    Pass{"DataCleanupService: 检查相邻的相同应用记录...",
         "DataCleanupService: 合并相邻记录失败: ", mergeAdjacentRecords},
};

/// Follows the others in a background run only.
inline constexpr Pass smartMerge{"DataCleanupService: 开始智能合并短时间记录...",
                                 "DataCleanupService: 智能合并短时间记录失败: ", mergeShortRecords};

inline constexpr Pass endingOfActiveRecords{"DataCleanupService: 结束所有活跃记录...",
                                            "DataCleanupService: 结束活跃记录失败: ", endActiveRecords};

}  // namespace quorvane::DataCleanupPasses
