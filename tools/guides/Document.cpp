#include "tools/guides/GuideSite.h"
#include "tools/guides/Html.h"

#include <fmt/format.h>

namespace pacelet::guides {

std::string document(std::string_view title, std::string_view description, std::string_view root,
                     std::string_view body) {
    return fmt::format(R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8"/>
<meta name="viewport" content="width=device-width, initial-scale=1"/>
<meta name="color-scheme" content="dark"/>
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'self'; img-src 'self'"/>
<title>{0}</title>
<meta name="description" content="{1}"/>
<link rel="icon" href="{2}logo.svg" type="image/svg+xml"/>
<link rel="stylesheet" href="{2}guides.css"/>
</head>
<body>
<header>
<a class="brand" href="{2}index.html"><img src="{2}logo.svg" alt="" width="34" height="34"/>Pacelet</a>
</header>
<main>
{3}</main>
<footer>
<p>Pacelet works locally. Nothing is uploaded.</p>
</footer>
</body>
</html>
)",
                       escaped(title), escaped(description), root, body);
}

} // namespace pacelet::guides
