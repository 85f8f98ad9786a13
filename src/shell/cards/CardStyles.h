#pragma once

#include "shell/cards/CardScene.h"

/// The twelve cards; each fills the whole of it.
namespace quorvane::CardStyles {

void paintClean(const CardScene& scene);
void paintElegantShadow(const CardScene& scene);
void paintGlassmorphism(const CardScene& scene);
void paintNeumorphism(const CardScene& scene);
void paintGradientCard(const CardScene& scene);
void paintDarkMode(const CardScene& scene);
void paintBusinessCard(const CardScene& scene);
void paintArtistic(const CardScene& scene);
void paintMinimal(const CardScene& scene);
void paintLuxury(const CardScene& scene);
void paintTechFuture(const CardScene& scene);
void paintWarmPaper(const CardScene& scene);

}  // namespace quorvane::CardStyles
