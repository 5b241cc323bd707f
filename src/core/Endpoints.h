#pragma once

// The addresses the program points people to, in one place.
namespace Endpoints {
inline constexpr char SupportAddress[] = "support@velmora.com";
inline constexpr char ProductPage[] = "https://velmora.com/quaydrop";
inline constexpr char AboutPage[] = "https://velmora.com/quaydrop/about";
inline constexpr char IntroArticle[] = "https://velmora.com/quaydrop/how-it-works";
inline constexpr char TwitterShare[] = "https://twitter.com/intent/tweet";
inline constexpr char FacebookShare[] = "https://www.facebook.com/sharer/sharer.php";
} // namespace Endpoints
