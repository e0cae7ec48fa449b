// A button on each program that copies it.
(function () {
  function copy(text) {
    if (navigator.clipboard && window.isSecureContext) return navigator.clipboard.writeText(text);
    var area = document.createElement("textarea");
    area.value = text;
    area.style.position = "fixed";
    area.style.opacity = "0";
    document.body.appendChild(area);
    area.select();
    document.execCommand("copy");
    document.body.removeChild(area);
  }

  function addButton(program) {
    var button = document.createElement("button");
    button.type = "button";
    button.className = "copy";
    button.textContent = "Copy";
    button.onclick = function () {
      copy(program.querySelector("pre").textContent);
      button.textContent = "Copied";
      window.setTimeout(function () { button.textContent = "Copy"; }, 1500);
    };
    program.insertBefore(button, program.firstChild);
  }

  var programs = document.querySelectorAll(".highlight-xojo, .highlight-default, .highlight-none, .highlight-xml");
  for (var i = 0; i < programs.length; i++) addButton(programs[i]);
})();
