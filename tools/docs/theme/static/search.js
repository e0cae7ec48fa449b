// Searches what search_data.js has of every page. For browsers as old as the systems that the plug-in runs on.
var siteSearch = (function () {
  // What a word of the query is worth where it is found; less of a name that it is a smaller part of.
  var WORTH = { name: 100, nameBegins: 60, namePart: 45, nameHas: 35, word: 25, wordBegins: 12, nameWithGaps: 10, text: 4, textBegins: 2 };

  function letters(text) {
    return text.toLowerCase().replace(/[^a-z0-9]/g, "");
  }

  // The parts of a name: "objectIsForcedForKey" has "object", "is", "forced", "for", "key".
  function partsOf(name) {
    return (name.match(/[A-Z]?[a-z0-9]+|[A-Z]+(?![a-z])/g) || []).join(" ").toLowerCase().split(" ");
  }

  function anyBegins(words, word) {
    for (var i = 0; i < words.length; i++) if (words[i].indexOf(word) === 0) return true;
    return false;
  }

  // All letters of the word, in their order, with others between them: "dictforkey" in "dictionaryforkey".
  function isWithGaps(name, word) {
    var at = 0;
    for (var i = 0; i < name.length && at < word.length; i++) if (name.charAt(i) === word.charAt(at)) at++;
    return word.length > 3 && at === word.length && name.charAt(0) === word.charAt(0);
  }

  function worth(page, word) {
    var name = letters(page.title);
    var whole = word.length / Math.max(name.length, 1);
    if (name === word) return WORTH.name;
    if (name.indexOf(word) === 0) return WORTH.nameBegins + whole;
    if (anyBegins(partsOf(page.title), word)) return WORTH.namePart + whole;
    if (name.indexOf(word) > 0 && word.length > 2) return WORTH.nameHas + whole;
    if (page.words.indexOf(word) >= 0) return WORTH.word;
    if (word.length > 2 && anyBegins(page.words, word)) return WORTH.wordBegins;
    if (isWithGaps(name, word)) return WORTH.nameWithGaps + whole;
    if (page.text.indexOf(word) >= 0) return WORTH.text;
    if (word.length > 2 && anyBegins(page.text, word)) return WORTH.textBegins;
    return 0;
  }

  // The words of a query; small ones such as "a" and "the" only where there are no others.
  function wordsOf(query) {
    var all = [], telling = [];
    query.split(/[^A-Za-z0-9_]+/).forEach(function (part) {
      var word = letters(part);
      if (word) all.push(word);
      if (word && !/^(an?|the|to|of|in|is|it|i|my|for|how|do|and|or|with)$/.test(word)) telling.push(word);
    });
    return telling.length ? telling : all;
  }

  // Each word must be somewhere in the page, or all of the query together in its name.
  function score(page, words, together) {
    var sum = 0;
    for (var i = 0; i < words.length; i++) {
      var one = worth(page, words[i]);
      if (!one) { sum = 0; break; }
      sum += one / words.length;
    }
    return Math.max(sum, worth(page, together));
  }

  // The pages that fit, the best first; of equals a member first, then the order of the contents.
  function find(pages, query) {
    var words = wordsOf(query), found = [];
    if (!words.length) return found;
    pages.forEach(function (page, index) {
      var value = score(page, words, letters(query));
      if (value) found.push({ page: page, value: value + (page.declaration ? 0.5 : 0), index: index });
    });
    found.sort(function (a, b) { return b.value - a.value || a.index - b.index; });
    return found.map(function (each) { return each.page; });
  }

  function element(kind, text, className) {
    var made = document.createElement(kind);
    made.textContent = text;
    if (className) made.className = className;
    return made;
  }

  function result(page) {
    var item = document.createElement("li"), link = element("a", page.title);
    link.href = page.address;
    item.appendChild(link);
    if (page.declaration) item.appendChild(element("code", page.declaration));
    item.appendChild(element("p", page.line));
    return item;
  }

  function show(pages, query, list, count) {
    var found = find(pages, query);
    list.innerHTML = "";
    found.forEach(function (page) { list.appendChild(result(page)); });
    if (!letters(query)) count.textContent = "Search for a name, a part of one, or what you want to do.";
    else if (!found.length) count.textContent = "Nothing is found for \u201c" + query + "\u201d. The members stand in the list of all members, and by task.";
    else count.textContent = found.length + (found.length === 1 ? " page" : " pages") + " for \u201c" + query + "\u201d";
  }

  // The page of results: the query comes with the address, and changes as one types.
  function begin(pages, field, list, count) {
    var asked = /[?&]q=([^&]*)/.exec(window.location.search);
    var query = asked ? decodeURIComponent(asked[1].replace(/\+/g, " ")) : "";
    field.value = query;
    field.oninput = function () { show(pages, field.value, list, count); };
    show(pages, query, list, count);
  }

  return { find: find, begin: begin };
})();

if (typeof module !== "undefined") module.exports = siteSearch;
