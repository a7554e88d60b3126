#include "core/enumerations.h"

namespace sorvan::core {

QString label(RelationshipType type) {
  switch (type) {
    case RelationshipType::generatedFrom:
      return QStringLiteral("Generated from");
    case RelationshipType::variationOf:
      return QStringLiteral("Variation of");
    case RelationshipType::editedFrom:
      return QStringLiteral("Edited from");
    case RelationshipType::imageToVideo:
      return QStringLiteral("Image to video");
    case RelationshipType::upscaledFrom:
      return QStringLiteral("Upscaled from");
    case RelationshipType::referenceFor:
      return QStringLiteral("Reference for");
    case RelationshipType::frameOf:
      return QStringLiteral("Frame of");
    case RelationshipType::copiedFrom:
      return QStringLiteral("Copied from");
    case RelationshipType::joinedFrom:
      return QStringLiteral("Joined from");
    case RelationshipType::trimmedFrom:
      return QStringLiteral("Trimmed from");
    case RelationshipType::soundFrom:
      return QStringLiteral("Sound from");
  }
  Q_UNREACHABLE();
}

}  // namespace sorvan::core
